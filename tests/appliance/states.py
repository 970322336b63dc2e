"""States of the machine that scenarios begin with, each made once and restored ever after."""

import hashlib
import shlex
import shutil
import time
from pathlib import Path

import image
import machine
import paths
from medium import InternalDisk
from stage import Stage
from text import TextFinder

READY = "ready"
CRASH_SCREEN = "crash_screen"


def digest() -> str:
    """What the states depend on besides the image."""
    code = [Path(__file__).with_name(name).read_text()
            for name in ("states.py", "stage.py", "machine.py")]
    return hashlib.sha256("".join([paths.IMAGE_STAMP.read_text(), *code]).encode()).hexdigest()


def make(finder: TextFinder) -> None:
    stamp = paths.STATE / "stamp"
    if stamp.exists() and stamp.read_text() == digest():
        return
    print("appliance: starting the machine once, for the scenarios to begin with", flush=True)
    shutil.rmtree(paths.STATE, ignore_errors=True)
    paths.STATE.mkdir(parents=True)
    InternalDisk.make_base(paths.STATE / "empty.qcow2", machine.INTERNAL_DISK_BYTES)
    stage = Stage(paths.RUNS / "states", finder)
    try:
        stage.boot()
        save(stage, READY)
    finally:
        stage.close()
    stage = Stage(paths.RUNS / "states", finder)
    try:
        stage.restore(READY)
        stage.machine.guest("play_crash")
        stage.wait_for("R4 Error Reporter", 120)
        stage.move_pointer()
        save(stage, CRASH_SCREEN)
    finally:
        stage.close()
    stamp.write_text(digest())


def save(stage: Stage, name: str) -> None:
    """Memory and internal disk at the same moment."""
    memory = paths.STATE / f"{name}.memory"
    command = stage.machine.qmp.command
    command("stop")
    command("migrate-set-parameters", max_bandwidth=4 << 30)
    command("migrate", uri=f"exec:cat >{shlex.quote(str(memory))}")
    while (status := command("query-migrate")["status"]) != "completed":
        if status == "failed":
            raise RuntimeError("the machine's state could not be saved")
        time.sleep(0.1)
    stage.machine.close()
    image.run("qemu-img", "convert", "-O", "qcow2", stage.internal.overlay,
              paths.STATE / f"{name}.qcow2")

"""What one scenario plays on: a machine of its own, its keys and its internal disk."""

import shutil
import time
from pathlib import Path

import paths
from machine import PARKED, Machine
from medium import InternalDisk, Key, fail
from package import Crash
from text import TextFinder

PATIENCE = 60
LOOK_EVERY = 0.1
ASLEEP = "until grep -q 'State:.S' /proc/$(pidof crash_reporter)/status; do usleep 20000; done"


class Stage:
    def __init__(self, folder: Path, finder: TextFinder, dump: bytes = b""):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        self.folder, self.finder = folder, finder
        self.keys: dict[str, Key] = {}
        self.machine: Machine | None = None
        self.internal = InternalDisk(folder / "internal.qcow2")
        self.crash = Crash(dump)
        self.pointer_was_moved = False

    # The start

    def restore(self, state: str) -> None:
        """A machine as it was when the state of that name was taken."""
        source = paths.STATE / state
        self.internal.lay_over(source.with_suffix(".qcow2"))
        self.machine = Machine(self.folder, self.internal.overlay, source.with_suffix(".memory"))
        self._wait_until_running()

    def _wait_until_running(self) -> None:
        deadline = time.monotonic() + PATIENCE
        command = self.machine.qmp.command
        while command("query-status")["status"] == "inmigrate":
            if time.monotonic() > deadline:
                raise TimeoutError("the machine was not restored")
            time.sleep(0.05)
        command("cont")  # it was stopped for taking the state

    def boot(self, clock: str = "", keys: list[str] = ()) -> None:
        self.internal.lay_over(paths.STATE / "empty.qcow2")
        plugged = [argument for name in keys for argument in self._key_arguments(self.keys[name])]
        self.machine = Machine(self.folder, self.internal.overlay, clock=clock,
                               keys=[plugged])
        self.machine.wait_for_console("init: ready", 180)

    # Keys

    def _key_arguments(self, key: Key) -> list[str]:
        read_only = "on" if key.read_only else "off"
        return ["-blockdev", f"raw,node-name=key{key.name},read-only={read_only},"
                f"file.driver=file,file.filename={key.file}",
                "-device", f"usb-storage,bus=xhci.0,id=stick{key.name},drive=key{key.name},"
                f"removable=on,port={self._port(key.name)}"]

    @staticmethod
    def _port(name: str) -> int:
        return 3 + "AB".index(name) if name in "AB" else 4

    def plug(self, name: str) -> None:
        """And waits, in the machine's time, until a key without partitions is announced too."""
        disks = "$(ls -d /sys/block/sd* 2>/dev/null | wc -l)"
        before = int(self.machine.guest(f"echo {disks}"))
        self._attach(name)
        self.machine.guest(f"until [ {disks} -gt {before} ]; do usleep 50000; done; sleep 3")

    def _attach(self, name: str) -> None:
        key = self.keys[name]
        command = self.machine.qmp.command
        node = {"driver": "raw", "node_name": f"key{name}", "read_only": key.read_only,
                "file": {"driver": "file", "filename": str(key.file)}}
        if key.bytes_per_second:
            command("object-add", qom_type="throttle-group", id=f"pace{name}",
                    limits={"bps-write": key.bytes_per_second})
            node = {"driver": "throttle", "node_name": f"key{name}",
                    "throttle_group": f"pace{name}", "read_only": key.read_only,
                    "file": dict(with_dashes(node), **{"node-name": f"medium{name}"})}
        command("blockdev-add", **node)
        command("device_add", driver="usb-storage", id=f"stick{name}", bus="xhci.0",
                port=str(self._port(name)), drive=f"key{name}", removable=True)

    def pull(self, name: str) -> None:
        since = len(self.machine.qmp.events)
        self.machine.qmp.command("device_del", id=f"stick{name}")
        self.machine.qmp.wait_for_event("DEVICE_DELETED", PATIENCE, since)
        self.machine.qmp.command("blockdev-del", node_name=f"key{name}")
        if self.keys[name].bytes_per_second:
            self.machine.qmp.command("object-del", id=f"pace{name}")

    def bytes_written(self, name: str) -> int:
        for device in self.machine.qmp.command("query-blockstats"):
            if f"stick{name}" in device.get("qdev", ""):
                return device["stats"]["wr_bytes"]
        return 0

    # The screen

    def wait_for(self, text: str, seconds: float = PATIENCE):
        deadline = time.monotonic() + seconds
        while True:
            place = self.finder.find(self.machine.screen(), text)
            if place:
                return place
            if time.monotonic() > deadline:
                fail(f"{text!r} did not come up")
            time.sleep(LOOK_EVERY)

    def wait_until_gone(self, text: str, seconds: float = PATIENCE) -> None:
        deadline = time.monotonic() + seconds
        while self.finder.find(self.machine.screen(), text):
            if time.monotonic() > deadline:
                fail(f"{text!r} stayed on the screen")
            time.sleep(LOOK_EVERY)

    def is_shown(self, text: str) -> bool:
        return self.finder.find(self.machine.screen(), text) is not None

    def click(self, text: str) -> None:
        place = self.wait_for(text)
        if not self.pointer_was_moved:
            self.move_pointer()
        self.machine.click(*place)

    def move_pointer(self) -> None:
        """
        Before the first click, and waits until the program has taken that in. Qt's driver
        puts whatever it reads first of a pointer into the corner: on a busy machine that
        would be the press.
        """
        for place in ((1, 1), PARKED):
            self.machine.move_to(*place)
            self.machine.guest(f"usleep 100000; {ASLEEP}; usleep 50000; {ASLEEP}")
        self.pointer_was_moved = True

    # The end

    def switch_off(self) -> None:
        """For looking at what is left: as pulling the plug, a scenario has ended otherwise."""
        if self.machine and self.machine.process.poll() is None:
            self.machine.cut_power()

    def close(self) -> None:
        if self.machine:
            self.machine.close()


def with_dashes(values: dict) -> dict:
    return {name.replace("_", "-"): value for name, value in values.items()}

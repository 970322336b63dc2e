"""One measured run of a program in the sandbox."""
import os
import re
import shlex
import shutil
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
BUILD = PROJECT / "build" / "release"
PLACE = PROJECT / "build" / "bench"
SCREEN_TITLE = "R4 Error Reporter"


def measured(probe):
    """The words before a command that load the probe into it and name the record."""
    return [str(PROJECT / "benchmarks" / "measured"), str(BUILD / "benchmarks" / probe), "/tmp/record"]


MEASURED = measured("end_probe.so")
UNTIL_PAINTED = measured("paint_probe.so")
COUNTING = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"]


@dataclass
class Usage:
    wall: float  # seconds from exec to the end, or to reboot(2)
    cpu: float  # seconds of user and system time
    peak: float  # MiB of memory at most
    resident: float  # MiB of memory at the end
    instructions: int  # 0 unless counted
    output: int  # bytes left in /user_data


@dataclass
class Files:
    """What goes into a package."""

    dump: Path
    report: Path
    log: Path


class Run:
    """A command on its way to `expected_end`; its output folders started empty.

    Runs at the same time need a `slot` of their own. With a `core` given, the
    command and all it starts stay on it.
    """

    def __init__(self, command, expected_end, environment=(), slot=0, core=None):
        self.place = PLACE / f"slot{slot}"
        self.expected_end = expected_end
        user_data, tmp = self.place / "user_data", self.place / "tmp"
        shutil.rmtree(self.place, ignore_errors=True)
        for folder in (user_data / "crash_dumps", tmp):
            folder.mkdir(parents=True)
        os.sync()  # what earlier runs wrote is not to be waited for in this one

        sandbox = [PROJECT / "tools" / "sandbox", "--user-data", user_data, "--tmp", tmp]
        sandbox += ["--report", self.place / "report"]
        for setting in ("QT_QPA_PLATFORM=offscreen", *environment):
            sandbox += ["--env", setting]
        pin = ["taskset", "--cpu-list", str(core)] if core is not None else []
        self.process = subprocess.Popen(
            [*pin, *sandbox, "--", *command], cwd=PROJECT, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT
        )

    def finish(self):
        said, _ = self.process.communicate()
        report = (self.place / "report").read_text()
        if f"end={self.expected_end}\n" not in report:
            raise RuntimeError(f"{self.process.args} did not end by {self.expected_end}:\n{report}{said}")
        record = dict(line.split("=") for line in (self.place / "tmp" / "record").read_text().split())
        output = sum(file.stat().st_size for file in (self.place / "user_data").rglob("*") if file.is_file())
        collected = re.search(r"Collected : (\d+)", said)
        return Usage(
            wall=float(record["wall"]),
            cpu=float(record["cpu"]),
            peak=int(record["peak_kib"]) / 1024,
            resident=int(record["resident_kib"]) / 1024,
            instructions=int(collected.group(1)) if collected else 0,
            output=output,
        )

    def wait_for_record(self):
        record = self.place / "tmp" / "record"
        while not (record.exists() and record.read_text().count("\n") >= 4):
            if self.process.poll() is not None:
                raise RuntimeError(f"{self.process.args} ended before it was measured")
            time.sleep(0.05)

    def end(self):
        self.process.terminate()
        self.process.communicate()


def reporter(dump, log, **where):
    """The shipped program, unattended: packs the dump and reboots."""
    scenario = [BUILD / "bin" / "crash_scenario", "--unattended", "--serial", "R4-000123", "--device-type", "3"]
    scenario += ["--version", "2.5.1", "--dump", dump, "--log", log, "--output", "started", "--output", "crashed"]
    return Run([*scenario, "--", *MEASURED, BUILD / "bin" / "crash_reporter"], "reboot", **where)


def crash_screen(counting=False, seconds=-1, stay=False):
    """The shipped program until its screen has been painted; with `stay` it goes on."""
    scenario = [BUILD / "bin" / "crash_scenario", "--seconds", str(seconds), "--serial", "R4-000123"]
    scenario += ["--device-type", "3", "--version", "2.5.1", "--dump", "/tmp/none.core"]
    return _until_painted([*scenario, "--"], BUILD / "bin" / "crash_reporter", counting, stay)


def bare_dialog(counting=False):
    return _until_painted([], BUILD / "benchmarks" / "bare_dialog", counting, False)


def _until_painted(before, program, counting, stay):
    command = [*before, *UNTIL_PAINTED, *(COUNTING if counting else []), program]
    environment = [f"R4_BENCH_WINDOW={SCREEN_TITLE}", "QT_FONT_DPI=96"]
    return Run(command, "exit", environment + (["R4_BENCH_STAY=1"] if stay else []))


def bsdtar(files, synced, **where):
    """bsdtar packs the same files in the same format."""
    package = "/user_data/crash_dumps/package.tar.gz"
    command = [*MEASURED, "bsdtar", "--format", "gnutar", "-czf", package]
    for file in (files.dump, files.report, files.log):
        command += ["-C", file.parent, file.name]
    return Run(command, "exit", [f"R4_BENCH_SYNC={package}"] if synced else [], **where)


def tar_and(compressor, files, **where):
    """GNU tar packs the same files, with a compressor of its own process behind it."""
    names = " ".join(f"-C {shlex.quote(str(file.parent))} {shlex.quote(file.name)}"
                     for file in (files.dump, files.report, files.log))
    line = f"set -o pipefail; tar --format=gnu -cf - {names} | {compressor} >/user_data/crash_dumps/package.tar.gz"
    return Run([*MEASURED, "bash", "-c", line], "exit", **where)


def bare_window():
    return Run([*MEASURED, BUILD / "benchmarks" / "bare_window"], "exit")


def toolkit_bench():
    """What benchmarks/toolkit_bench.cpp prints; it touches nothing and needs no sandbox."""
    environment = dict(
        os.environ,
        QT_QPA_PLATFORM="offscreen",
        QT_FONT_DPI="96",
        FONTCONFIG_FILE=str(PROJECT / "tests" / "support" / "fonts.conf"),
    )
    command = [BUILD / "benchmarks" / "toolkit_bench"]
    return subprocess.run(command, env=environment, text=True, check=True, stdout=subprocess.PIPE).stdout


def file_dialog(which, folder):
    """What benchmarks/dialog_bench.cpp prints: milliseconds to the first files, and to all of them."""
    sandbox = [PROJECT / "tools" / "sandbox", "--env", "QT_QPA_PLATFORM=offscreen", "--env", "QT_FONT_DPI=96"]
    command = [*sandbox, "--", BUILD / "benchmarks" / "dialog_bench", which, folder]
    said = subprocess.run(command, text=True, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    return tuple(map(float, said.split()))

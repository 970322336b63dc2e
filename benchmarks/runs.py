"""One measured run of a program in the sandbox."""
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
BUILD = PROJECT / "build" / "release"
PLACE = PROJECT / "build" / "bench"
MEASURED = [str(PROJECT / "benchmarks" / "measured"), str(BUILD / "benchmarks" / "end_probe.so"), "/tmp/record"]


@dataclass
class Usage:
    wall: float  # seconds from exec to the end, or to reboot(2)
    cpu: float  # seconds of user and system time
    peak: float  # MiB of memory at most
    output: int  # bytes left in /user_data


@dataclass
class Files:
    """What goes into a package."""

    dump: Path
    report: Path
    log: Path


def measure(command, expected_end, environment=()):
    """Runs a command that ends in `expected_end`; its output folders start empty."""
    user_data, tmp = PLACE / "user_data", PLACE / "tmp"
    for folder in (user_data, tmp):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    (user_data / "crash_dumps").mkdir()
    os.sync()  # what earlier runs wrote is not to be waited for in this one

    report = PLACE / "sandbox_report"
    sandbox = [PROJECT / "tools" / "sandbox", "--user-data", user_data, "--tmp", tmp, "--report", report]
    for setting in ("QT_QPA_PLATFORM=offscreen", *environment):
        sandbox += ["--env", setting]
    run = subprocess.run([*sandbox, "--", *command], cwd=PROJECT, capture_output=True, text=True)
    if f"end={expected_end}\n" not in report.read_text():
        raise RuntimeError(f"{command} did not end by {expected_end}:\n{report.read_text()}{run.stderr}")
    record = dict(line.split("=") for line in (tmp / "record").read_text().split())
    output = sum(file.stat().st_size for file in user_data.rglob("*") if file.is_file())
    return Usage(float(record["wall"]), float(record["cpu"]), int(record["peak_kib"]) / 1024, output)


def reporter(dump, log):
    """The shipped program, unattended: packs the dump and reboots."""
    scenario = [BUILD / "bin" / "crash_scenario", "--unattended", "--serial", "R4-000123", "--device-type", "3"]
    scenario += ["--version", "2.5.1", "--dump", dump, "--log", log, "--output", "started", "--output", "crashed"]
    return measure([*scenario, "--", *MEASURED, BUILD / "bin" / "crash_reporter"], "reboot")


def bsdtar(files, synced):
    """bsdtar packs the same files in the same format."""
    package = "/user_data/crash_dumps/package.tar.gz"
    command = [*MEASURED, "bsdtar", "--format", "gnutar", "-czf", package]
    for file in (files.dump, files.report, files.log):
        command += ["-C", file.parent, file.name]
    return measure(command, "exit", [f"R4_BENCH_SYNC={package}"] if synced else [])


def bare_window():
    return measure([*MEASURED, BUILD / "benchmarks" / "bare_window"], "exit")

"""scripts/appliance: makes the image, then tests, demonstrates or opens a console."""

import argparse
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor, as_completed
from pathlib import Path

import demo
import image
import machine
import measure
import paths
import scenario
import states
from text import TextFinder

MACHINES = 2
QUICK = ["attended_save_fat32", "unattended", "no_key", "pulled_during_save-6"]


def chosen(names: list[str]) -> list[scenario.Scenario]:
    every = scenario.read_all()
    if not names:
        return every
    picked = [each for name in names for each in every
              if name in (each.name, each.name.rsplit("-", 1)[0])]
    if not picked:
        raise SystemExit(f"appliance: no scenario {' '.join(names)}; there are "
                         + " ".join(s.name for s in every))
    return picked


def report(result: scenario.Result) -> None:
    word = "FAILED" if result.failure else "passed"
    print(f"{word}  {result.seconds:6.1f} s  {result.scenario.name:32} {result.scenario.title}",
          flush=True)
    if result.failure:
        print(f"        {result.failure}", flush=True)


def test(names: list[str], finder: TextFinder) -> int:
    scenarios = chosen(names)
    dump = image.dump()
    began = time.monotonic()
    with ThreadPoolExecutor(MACHINES) as pool:
        results = []
        running = [pool.submit(scenario.run, each, finder, dump) for each in scenarios]
        for done in as_completed(running):
            results.append(done.result())
            report(results[-1])
    failed = sum(1 for result in results if result.failure)
    print(f"{len(results) - failed} passed, {failed} failed", flush=True)
    left = f"; what is left of the failed ones is in {paths.RUNS.relative_to(paths.PROJECT)}"
    print(f"in {time.monotonic() - began:.0f} s on {MACHINES} machines{left if failed else ''}",
          flush=True)
    return 1 if failed or not results else 0


def console() -> int:
    """The machine's first serial line on this terminal, a busybox shell in it."""
    folder = paths.RUNS / "shell"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    disk = folder / "internal.qcow2"
    shutil.copy(paths.STATE / "empty.qcow2", disk)
    command = ["qemu-system-x86_64", *machine.devices(), "-no-reboot",
               *machine.image_arguments(disk, ["r4.console"]),
               "-serial", "mon:stdio", "-serial", "null"]
    print("appliance: play_crash starts the crash reporter; Ctrl-A X leaves", flush=True)
    return subprocess.run(command).returncode


def main() -> int:
    parser = argparse.ArgumentParser(prog="scripts/appliance")
    parser.add_argument("--bin", type=Path, default=paths.PROJECT / "build/release/bin")
    parser.add_argument("command", choices=["test", "quick", "list", "measure", "demo", "shell"])
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    if options.command == "list":
        for each in scenario.read_all():
            print(f"{each.name:32} {each.title}")
        return 0
    image.make(options.bin)
    finder = TextFinder(options.bin / "screen_text")
    states.make(finder)
    if options.command == "test":
        return test(options.names, finder)
    if options.command == "quick":
        return test(QUICK, finder)
    if options.command == "measure":
        return measure.measure(finder, int((options.names or [measure.RUNS])[0]))
    if options.command == "demo":
        return demo.play_demo(finder)
    return console()


if __name__ == "__main__":
    sys.exit(main())

"""From the start of the program to the reboot, in the machine's own time, next to a peer."""

from dataclasses import dataclass
from statistics import median

import image
import package
import paths
from medium import fail
from stage import PATIENCE, Stage
from states import READY
from text import TextFinder
from words import expect_reboot

RUNS = 5


@dataclass(frozen=True)
class Contender:
    name: str
    command: str
    begins_with: str


REPORTER = Contender("crash reporter, unattended", "play_crash --unattended",
                     "r4: the reporter starts")
PEER = Contender("busybox: tar -cz, sync, reboot -f",
                 "setsid play_peer </dev/null >/dev/null 2>&1 &", "r4: the peer starts")


def run_once(contender: Contender, finder: TextFinder) -> float:
    """Seconds; only of a run that left the whole dump behind."""
    stage = Stage(paths.RUNS / "measure", finder, image.dump())
    try:
        stage.restore(READY)
        stage.machine.guest(contender.command)
        expect_reboot(stage, PATIENCE)
        found = stage.internal.take("Crash Report 0.cdp", stage.folder / "found.cdp")
        if package.members(found)["r4_main.core"] != stage.crash.dump:
            fail(f"{contender.name} did not pack the dump")
        return (stage.machine.machine_time("reboot: Restarting system")
                - stage.machine.machine_time(contender.begins_with))
    finally:
        stage.close()


def measure(finder: TextFinder, runs: int) -> int:
    """Turn by turn, so that whatever else the host does meets both."""
    times = {REPORTER: [], PEER: []}
    for _ in range(runs):
        for contender, found in times.items():
            found.append(run_once(contender, finder))
    for contender, found in times.items():
        print(f"{contender.name:36} median {median(found):.2f} s of"
              + "".join(f" {seconds:.2f}" for seconds in found))
    print(f"ratio {median(times[REPORTER]) / median(times[PEER]):.2f}")
    return 0

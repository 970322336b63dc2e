"""The command: see --help."""

import argparse
import pathlib
import random
import sys

from .roads import ROADS
from .sweep import Sweep
from .table import road_table
from .trial import Tools

QUICK_FAULTS = 60


def _options():
    parser = argparse.ArgumentParser(
        prog="sweep", description="Lets every system call of the save road fail in turn, with "
        "every errno it can meet, and checks that what the program says is what a reader finds.")
    names = [road.name for road in ROADS]
    parser.add_argument("--road", action="append", choices=names,
                        help="only this road; may be given again")
    parser.add_argument("--quick", action="store_true",
                        help=f"a sample of {QUICK_FAULTS} faults over the chosen roads")
    parser.add_argument("--call", action="append", help="only faults of this system call")
    parser.add_argument("--jobs", type=int, default=2, help="runs at a time (2)")
    parser.add_argument("--table", type=pathlib.Path, help="also write the tables to this file")
    project = pathlib.Path(__file__).resolve().parents[3]
    parser.add_argument("--build", type=pathlib.Path, default=project / "build/release",
                        help="where the shipped program is")
    parser.add_argument("--helpers", type=pathlib.Path,
                        help="where the injector and the operator are, if not there")
    options = parser.parse_args()
    options.tools = Tools(project, options.build.absolute(),
                          (options.helpers or options.build).absolute())
    return options


def _sample(faults, count):
    """Spread over the calls, the same at every run: the rare calls first come in full."""
    shuffled = random.Random(6).sample(faults, len(faults))
    seen = {}
    for fault in shuffled:
        seen.setdefault(fault.call.name, []).append(fault)
    rounds = [fault for turn in range(len(faults))
              for fault in (faults_of[turn] for faults_of in seen.values()
                            if turn < len(faults_of))]
    return rounds[:count]


def main():
    options = _options()
    missing = options.tools.missing()
    if missing:
        print("sweep: not there: " + ", ".join(missing), file=sys.stderr)
        return 2
    roads = [road() for road in ROADS if not options.road or road.name in options.road]
    sweeps = []
    for road in roads:
        sweep = Sweep(road, options.tools, options.jobs)
        faults = sweep.plan()
        if options.call:
            faults = [fault for fault in faults if fault.call.name in options.call]
        if options.quick:
            faults = _sample(faults, QUICK_FAULTS // len(roads))
        sweep.play(faults)
        sweeps.append(sweep)
    return _report(sweeps, options.table)


def _report(sweeps, file):
    lines = [line for sweep in sweeps for line in road_table(sweep)]
    print("\n".join(lines))
    if file:
        file.write_text("\n".join(lines) + "\n", encoding="utf-8")
    findings = [line for sweep in sweeps for line in sweep.findings]
    for line in findings:
        print("VIOLATION " + line)
    missed = [option for sweep in sweeps for option in sweep.missed]
    for option in missed:
        print("NOT REACHED " + option)
    injected = sum(sum(sweep.injected.values()) for sweep in sweeps)
    print(f"{injected} faults injected, {len(findings)} violated the invariant")
    return 1 if findings or missed or not injected else 0


sys.exit(main())

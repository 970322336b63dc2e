"""Scenarios: text files with a line of plain words a step. docs/appliance.md tells how."""

import re
import time
import traceback
from dataclasses import dataclass
from pathlib import Path

import paths
from medium import CheckFailed
from stage import Stage
from text import TextFinder
from words import play


@dataclass
class Scenario:
    name: str
    title: str
    steps: list[tuple[int, str]]


@dataclass
class Result:
    scenario: Scenario
    seconds: float
    failure: str = ""


def read(file: Path) -> list[Scenario]:
    """One scenario, or one for each value of its "for each NAME of ..." line."""
    title, values, variable, steps = "", [None], "", []
    for number, line in enumerate(file.read_text().splitlines(), 1):
        text = line.strip()
        if text.startswith("#"):
            title = title or text.lstrip("# ")
        elif found := re.fullmatch(r"for each (\w+) of (.*)", text):
            variable, values = found.group(1), found.group(2).split()
        elif text:
            steps.append((number, text))
    name = file.stem
    return [Scenario(name if value is None else f"{name}-{value}", title,
                     [(n, t if value is None else t.replace(variable, value)) for n, t in steps])
            for value in values]


def read_all() -> list[Scenario]:
    return [scenario for file in sorted(paths.SCENARIOS.glob("*.txt")) for scenario in read(file)]


def run(scenario: Scenario, finder: TextFinder, dump: bytes) -> Result:
    """What is left of a failed one stays in its folder, with a picture of the last screen."""
    began = time.monotonic()
    stage = Stage(paths.RUNS / scenario.name, finder, dump)
    failure, step = "", (0, "")
    try:
        for step in scenario.steps:
            play(stage, step[1])
    except Exception as error:
        kind = "" if isinstance(error, CheckFailed) else f"{type(error).__name__}: "
        failure = f"line {step[0]}, {step[1]}: {kind}{error}"
        keep_evidence(stage, failure)
    finally:
        stage.close()
    if not failure:
        tidy(stage)
    return Result(scenario, time.monotonic() - began, failure)


def keep_evidence(stage: Stage, failure: str) -> None:
    (stage.folder / "failure.txt").write_text(failure + "\n" + traceback.format_exc())
    try:
        stage.machine.screen()
    except Exception:
        pass  # the machine is gone: its console log tells the rest


def tidy(stage: Stage) -> None:
    for file in stage.folder.iterdir():
        if file.suffix in (".img", ".raw", ".qcow2", ".volume", ".ppm", ".cdp"):
            file.unlink()

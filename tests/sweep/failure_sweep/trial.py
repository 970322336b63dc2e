"""One run of the shipped program in the sandbox, and everything that can be told of it."""

import os
import pathlib
import subprocess
import tempfile
from dataclasses import dataclass, field

LIMIT_SECONDS = 30


@dataclass
class Call:
    """A system call on the road."""
    thread: str
    name: str
    turn: int
    file: str
    result: int
    injected: bool
    creates: bool = False


@dataclass
class Fault:
    """What is to happen to one call."""
    call: Call
    what: str

    def option(self):
        call = self.call
        return f"{call.thread}:{call.name}:{call.turn}:{self.what}"


@dataclass
class Outcome:
    """What is left of a run."""
    calls: list
    injected: Call = None
    end: str = ""
    user_data: str = ""
    signal: str = ""
    hung: bool = False
    messages: str = ""
    tree: dict = field(default_factory=dict)  # "tmp/…", "user_data/…", "key/…" -> bytes


def run(road, tools, fault=None):
    """Plays the road once."""
    with tempfile.TemporaryDirectory(prefix="sweep.") as name:
        place = pathlib.Path(name)
        options = road.prepare(place)
        injector = [str(tools.injector), "--log", "/sweep/calls"]
        for prefix in road.prefixes:
            injector += ["--road", prefix]
        if fault:
            injector += ["--fault", fault.option()]
        (place / "sweep").mkdir()
        command = [
            str(tools.sandbox), *options, "--bind", f"{place}/sweep:/sweep",
            "--report", f"{place}/report", "--",
            *road.command(tools, [*injector, "--"]),
        ]
        return _outcome(place, *_play(command))


def _play(command):
    """Whether it hung, and what was said on standard error. Both streams are pipes: files
    would be somewhere on the road."""
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE) as process:
        try:
            _, messages = process.communicate(timeout=LIMIT_SECONDS)
            return False, messages.decode(errors="replace")
        except subprocess.TimeoutExpired:
            process.terminate()
            _, messages = process.communicate()
            return True, messages.decode(errors="replace")


def _outcome(place, hung, messages):
    report = dict(line.split("=", 1) for line in
                  (place / "report").read_text().splitlines())
    calls, signal = _calls(place / "sweep" / "calls")
    return Outcome(calls=calls, injected=next((c for c in calls if c.injected), None),
                   end=report.get("end", ""), user_data=report.get("user_data", ""),
                   signal=signal, hung=hung, messages=messages, tree=_tree(place))


def _calls(path):
    calls = []
    signal = ""
    for line in path.read_text(errors="replace").splitlines() if path.exists() else []:
        words = line.split("\t")
        if words[0] == "signal":
            signal = words[1]
        if len(words) != 6:
            continue
        thread, name, turn, file, result, injected = words
        calls.append(Call(thread, name, int(turn), file,
                          0 if result == "?" else int(result), injected == "injected"))
    return calls, signal


def _tree(place):
    tree = {}
    for top in ("tmp", "user_data", "keys"):
        for folder, _, files in os.walk(place / top):
            for file in files:
                path = pathlib.Path(folder, file)
                if path.is_file():
                    tree[str(path.relative_to(place))] = path.read_bytes()
    return tree


@dataclass
class Tools:
    """The programs of a build."""
    project: pathlib.Path
    build: pathlib.Path
    helpers: pathlib.Path

    def __post_init__(self):
        self.sandbox = self.project / "tools/sandbox"
        self.program = self.build / "bin/crash_reporter"
        self.scenario = self.build / "bin/crash_scenario"
        self.injector = self.helpers / "tests/fault_injector"
        self.operator = self.helpers / "lib/save_operator.so"
        self.key_stand_in = self.helpers / "lib/key_stand_in.so"

    def missing(self):
        needed = (self.sandbox, self.program, self.scenario, self.injector, self.operator,
                  self.key_stand_in)
        return [str(path) for path in needed if not path.exists()]

"""Plans the faults of a road, plays them and counts."""

import sys
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor

from . import trial
from .plausible import failures_of, in_words
from .verdict import expected_entries, judge, subject_of

ATTEMPTS = 3


class Sweep:
    """One road from its counting run to its table."""

    def __init__(self, road, tools, jobs):
        self.road = road
        self.tools = tools
        self.jobs = jobs
        self.calls = Counter()
        self.failures = {}
        self.injected = Counter()
        self.violated = Counter()
        self.allowed = Counter()
        self.claims = 0
        self.missed = []
        self.findings = []
        self.seconds = 0.0

    def plan(self):
        """Every call of a run without a fault, with everything that can happen to it."""
        self.reference = trial.run(self.road, self.tools)
        self.expected = expected_entries(self.reference, self.road)
        verdict = judge(self.road, self.expected, self.reference)
        if verdict.violations or verdict.claimed:
            raise RuntimeError(f"{self.road.name} fails without a fault: {verdict.violations}")
        faults = []
        for call in self.reference.calls:
            if not self.road.covers(subject_of(call)):
                continue
            call.creates = subject_of(call) in ("package", "block") or call.file == "/tmp"
            words = failures_of(call)
            self.calls[call.name] += 1
            self.failures.setdefault(call.name, set()).update(words)
            faults += [trial.Fault(call, what) for what in words]
        return faults

    def play(self, faults):
        start = time.monotonic()
        with ThreadPoolExecutor(self.jobs) as pool:
            for done, (fault, outcome) in enumerate(
                    zip(faults, pool.map(self._run, faults)), 1):
                self._count(fault, outcome)
                if sys.stderr.isatty():
                    print(f"\r{self.road.name}: {done} of {len(faults)}", end="",
                          file=sys.stderr)
        if sys.stderr.isatty():
            print(file=sys.stderr)
        self.seconds = time.monotonic() - start

    def _run(self, fault):
        """Again when the fault hit another call than it was meant for, or none: the order of
        calls is not always the same where several threads make them."""
        for _ in range(ATTEMPTS):
            outcome = trial.run(self.road, self.tools, fault)
            hit = outcome.injected
            if hit and subject_of(hit) == subject_of(fault.call):
                break
        return outcome

    def _count(self, fault, outcome):
        verdict = judge(self.road, self.expected, outcome)
        if outcome.injected:
            self.injected[fault.call.name] += 1
        else:
            self.missed.append(fault.option())
        self.claims += verdict.claimed
        if verdict.allowance:
            self.allowed[verdict.allowance] += 1
        if verdict.violations:
            self.violated[fault.call.name] += 1
            self._tell(fault, outcome, verdict.violations)

    def _tell(self, fault, outcome, violations):
        """At once: a sweep takes minutes."""
        call = outcome.injected or fault.call
        self.findings.append(
            f"{self.road.name}: {call.name}({call.file}) number {call.turn}, thread "
            f"{call.thread}: {in_words(fault.what)}: {'; '.join(violations)}")
        print("VIOLATION " + self.findings[-1], flush=True)
        print(f"  {fault.option()}\n  " + outcome.messages.replace("\n", "\n  "), flush=True)

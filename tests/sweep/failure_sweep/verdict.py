"""What a run must have come to, and what the system's rules let the program not know."""

import errno
from dataclasses import dataclass

from . import roads
from .package import NotWhole, entries_of

LOOKS = {"stat", "newfstatat", "statx", "access", "fstat"}

UNMOUNT_CLAIM = "Failed to unmount user_data"


def subject_of(call):
    """Which part of the road a call is about: names of files differ from run to run."""
    file = call.file
    if call.name.startswith(("shm", "sem")):
        return "block"
    if file.startswith(("/tmp/#", "/tmp/crash_reporter.")) or file == "/tmp":
        return "report"
    for prefix, subject in (("/tmp/crash_data", "crash data"), (f"/tmp/{roads.DUMP}", "dump"),
                            (f"/tmp/{roads.LOG}", "log"), ("/tmp/qipc_", "block"),
                            ("/dev/watchdog", "watchdog"), ("/dev", "devices"),
                            ("/sys", "devices")):
        if file.startswith(prefix):
            return subject
    if file.endswith(".cdp"):
        return "package"
    if file.startswith(("/user_data", "/usbkey")):
        return "folder"
    return "machine"


@dataclass(frozen=True)
class Allowance:
    """What a fault of these calls on that part of the road may do unnoticed, and why."""
    subject: str
    calls: frozenset
    effects: frozenset
    reason: str
    error: int = 0  # only this one; 0: any

    def covers(self, call):
        return subject_of(call) == self.subject and call.name in self.calls and \
            self.error in (0, -call.result)


def _allow(subject, calls, effects, reason, error=0):
    return Allowance(subject, frozenset(calls), frozenset(effects), reason, error)


ALLOWANCES = (
    _allow("dump", LOOKS | {"openat"}, {"dump missing"},
           "An entry that could not be added does not make a package fail: service would "
           "rather have a package that lacks an entry than none (docs/formats.md)."),
    _allow("dump", {"read", "lseek"}, {"dump padded"},
           "The size of an entry is fixed before its bytes: a source that fails to be read "
           "half-way, or ends early, is padded with zeros (FileArchive::addFile)."),
    _allow("log", LOOKS | {"openat"}, {"log missing"},
           "A log that cannot be looked at or opened counts as one that is not there."),
    _allow("log", {"read", "lseek"}, {"log padded"},
           "As for the dump: the rest of the entry is zeros."),
    _allow("report", LOOKS | {"openat", "linkat"}, {"report missing"},
           "The report's temporary file is one more entry that could not be added."),
    _allow("report", {"read", "lseek"}, {"report padded"},
           "As for the dump: the rest of the entry is zeros."),
    _allow("report", {"write"}, {"report cut"},
           "A temporary file cut short is packed as far as it got: dump and log are what "
           "service needs most."),
    _allow("folder", {"mount"}, {"no package"},
           "A mount point that is busy is taken to hold the key already, left there by an "
           "earlier run (docs/usb-keys.md); a kernel that says so of an empty one is believed.",
           errno.EBUSY),
)

# Behind these the package may well be whole on the medium; nobody can tell.
DURABILITY = {"fsync", "sync_file_range"}


@dataclass
class Verdict:
    violations: list
    allowance: Allowance = None
    claimed: bool = False


def expected_entries(reference, road):
    """Those of the run without a fault, which must be what was put in."""
    entries = entries_of(reference.tree[road.package])
    names = [name for name, _ in entries]
    if names != [roads.DUMP, "report.xml", roads.LOG] or \
            entries[0][1] != roads.DUMP_BYTES or entries[2][1] != roads.LOG_BYTES or \
            not entries[1][1].endswith(b"</n1:CrashReport>\n"):
        raise NotWhole(f"not what was put in: {names}")
    return entries


def judge(road, expected, outcome):
    violations = []
    if outcome.hung:
        violations.append("hung")
    if outcome.signal:
        violations.append(f"died of signal {outcome.signal}")
    elif outcome.end != "reboot" and not outcome.hung:
        violations.append(f"did not restart the machine: {outcome.end}")
    claimed = road.claims_problem(outcome.messages)
    if claimed is None:
        violations.append("claimed neither success nor failure")
    allowance = _judge_package(road, expected, outcome, claimed, violations)
    _judge_unmount(outcome, violations)
    _judge_files(road, outcome, violations)
    return Verdict(violations, allowance, bool(claimed))


def _judge_package(road, expected, outcome, claimed, violations):
    call = outcome.injected
    data = outcome.tree.get(road.package_in(outcome))
    try:
        effects = {"no package"} if data is None else _effects(expected, entries_of(data))
    except NotWhole as error:
        effects = {f"not whole: {error}"}
    if claimed:
        if not effects and not (call and _may_be_unsure(call)):
            violations.append("claimed a problem where there was none")
        return None
    if not effects:
        return None
    for allowance in ALLOWANCES:
        if call and allowance.covers(call) and effects <= allowance.effects:
            return allowance
    violations.append("claimed success, but: " + ", ".join(sorted(effects)))
    return None


def _may_be_unsure(call):
    return call.name in DURABILITY or \
        (call.name == "openat" and subject_of(call) == "folder")


def _effects(expected, found):
    """In what the entries found differ from those expected; empty when in nothing."""
    kinds = {roads.DUMP: "dump", "report.xml": "report", roads.LOG: "log"}
    effects = set()
    rest = list(found)
    for name, data in expected:
        if not rest or rest[0][0] != name:
            effects.add(f"{kinds[name]} missing")
            continue
        _, actual = rest.pop(0)
        kept = actual.rstrip(b"\0")
        if actual == data:
            continue
        if len(actual) == len(data) and data.startswith(kept):
            effects.add(f"{kinds[name]} padded")
        elif data.startswith(actual):
            effects.add(f"{kinds[name]} cut")
        else:
            effects.add(f"{kinds[name]} changed")
    return effects | ({"more than expected"} if rest else set())


def _judge_unmount(outcome, violations):
    mounted = outcome.user_data != "unmounted"
    if mounted != (UNMOUNT_CLAIM in outcome.messages):
        violations.append(f"/user_data is {outcome.user_data}, and the program says otherwise")


def _judge_files(road, outcome, violations):
    for path, data in road.earlier.items():
        if outcome.tree.get(path) != data:
            violations.append(f"lost what was there before: {path}")
    for path in outcome.tree:
        if path in road.earlier or path == road.package_in(outcome) or \
                road.may_be_left(path) or _unlink_failed(path, outcome):
            continue
        violations.append(f"left behind: {path}")


def _unlink_failed(path, outcome):
    """A file that the kernel refuses to remove stays; there is nobody to tell."""
    call = outcome.injected
    return call is not None and call.name == "unlink" and "/" + path == call.file

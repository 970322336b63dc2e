"""The roads a crash report takes to a medium: what is prepared, started and expected."""

import random

DUMP = "r4.core"
LOG = "r4.log"
SAVE_CLAIM = "There was a problem auto-saving the crash report to "
EARLIER = b"what an earlier crash left\n"


# Compresses badly, so that the package is written in pieces; with a hole in the middle.
_NOISE = random.Random(2026)
_HEAD = _NOISE.randbytes(17 * 4096)
_HOLE = 16 * 4096
_TAIL = _NOISE.randbytes(40000)
DUMP_BYTES = _HEAD + bytes(_HOLE) + _TAIL
LOG_BYTES = b"12:00:00 started\n" * 50


class Road:
    """Common to all of them. The files that calls are about have names of their own."""
    name = ""
    title = ""
    prefixes = ("/tmp", "/user_data", "/usbkey", "/dev/watchdog")
    facts = ["--crash-file", "/tmp/crash_data", "--dump", "/tmp/" + DUMP,
             "--log", "/tmp/" + LOG, "--time", "2026-11-21T14:30:05", "--serial", "SN-0042",
             "--device-type", "3", "--version", "2.5.1.BETA3", "--output", "last words"]
    earlier = {}
    package = ""

    def prepare(self, place):
        """Fills the folders of a run and returns the sandbox's options for them."""
        for folder in ("tmp", "user_data"):
            (place / folder).mkdir()
        with open(place / "tmp" / DUMP, "wb") as dump:
            dump.write(_HEAD)
            dump.seek(_HOLE, 1)
            dump.write(_TAIL)
        (place / "tmp" / LOG).write_bytes(LOG_BYTES)
        for path, data in self.earlier.items():
            (place / path).parent.mkdir(parents=True, exist_ok=True)
            (place / path).write_bytes(data)
        return ["--tmp", f"{place}/tmp", "--user-data", f"{place}/user_data",
                "--env", "QT_QPA_PLATFORM=offscreen", "--env", "LC_ALL=C.UTF-8"]

    def command(self, tools, injector):
        # A watchdog card: a plain file that the injector answers for.
        card = ["sh", "-c", 'true >/dev/watchdog; exec "$@"', "sh"]
        return [*card, str(tools.scenario), *self.facts, *self.scenario, "--",
                *injector, *self.reporter(tools)]

    def reporter(self, tools):
        return [str(tools.program)]

    def claims_problem(self, messages):
        """Whether the program says that saving failed; None when it does not say."""
        return SAVE_CLAIM in messages

    def covers(self, subject):
        """Whether faults of that part of the road are tried here."""
        return True

    def package_in(self, outcome):
        """The path that the program was to save to."""
        return self.package

    def may_be_left(self, path):
        """Files that belong where they are when the machine goes down."""
        mine = (f"tmp/{DUMP}", f"tmp/{LOG}")
        # Qt makes the native keys of shared memory of these; who removes them is chance.
        return path in mine or path.startswith("tmp/qipc_")


class Unattended(Road):
    """Saved by the program itself, on a machine that crashes for the first time."""
    name = "unattended"
    title = "unattended save, nothing saved before"
    scenario = ["--unattended"]
    package = "user_data/crash_dumps/Crash Report 0.cdp"

    def package_in(self, outcome):
        """A number of which nothing can be learnt is left alone: the next one is taken."""
        call = outcome.injected
        number = int(self.package[-len("N.cdp")])
        if call and call.name == "access" and call.file == "/" + self.package:
            return self.package.replace(f"{number}.cdp", f"{number + 1}.cdp")
        return self.package


class UnattendedAgain(Unattended):
    """The same where a package of an earlier crash must be left alone."""
    name = "unattended-again"
    title = "unattended save beside earlier packages"
    earlier = {"user_data/crash_dumps/Crash Report 0.cdp": EARLIER,
               "user_data/crash_dumps/Crash Report 1.cdp": EARLIER}
    package = "user_data/crash_dumps/Crash Report 2.cdp"

    def covers(self, subject):
        return subject in ("package", "folder")  # the rest is the same road


class Attended(Road):
    """An operator saves it to a key, reads what the program says and restarts."""
    name = "attended"
    title = "attended save to a key"
    scenario = ["--seconds", "0"]
    prefixes = (*Road.prefixes, "/dev", "/sys/block")
    package = "keys/sdb1/report.cdp"
    earlier = {"keys/sdb1/older.cdp": EARLIER}

    def covers(self, subject):
        return subject not in ("watchdog", "block")  # the start is the same

    def prepare(self, place):
        options = super().prepare(place)
        (place / "keys" / "plugged").write_text("sdb\nsdb1\n")
        return [*options, "--keys", f"{place}/keys"]

    def reporter(self, tools):
        preload = f"LD_PRELOAD={tools.key_stand_in}:{tools.operator}"
        return ["env", preload, str(tools.program)]

    def claims_problem(self, messages):
        """By the message box that the operator of save_operator.cpp reads."""
        if "operator reads: Success: " in messages:
            return False
        return True if "operator reads: Error: " in messages else None

    def may_be_left(self, path):
        # The notes of the sandbox and of the stand-in for the kernel's vfat.
        notes = ("keys/plugged", "keys/calls", "keys/control")
        return path in notes or super().may_be_left(path)


ROADS = (Unattended, UnattendedAgain, Attended)

"""That the sweep sees what is wrong: its reader and its verdict, fed with what a run that
went wrong would leave."""

import gzip
import io
import tarfile
import unittest

from failure_sweep import roads
from failure_sweep.package import NotWhole, entries_of
from failure_sweep.trial import Call, Outcome
from failure_sweep.verdict import judge

ROAD = roads.Unattended()
ENTRIES = [(roads.DUMP, roads.DUMP_BYTES), ("report.xml", b"<report/>\n"),
           (roads.LOG, roads.LOG_BYTES)]
CLAIM = roads.SAVE_CLAIM + "/user_data/crash_dumps/Crash Report 0.cdp\n"


def packed(entries, end=bytes(1024)):
    stream = io.BytesIO()
    with tarfile.open(fileobj=stream, mode="w", format=tarfile.GNU_FORMAT) as tar:
        for name, data in entries:
            info = tarfile.TarInfo(name)
            info.size = len(data)
            tar.addfile(info, io.BytesIO(data))
        length = tar.offset
    return gzip.compress(stream.getvalue()[:length] + end)


def run(package=packed(ENTRIES), **changed):
    tree = {ROAD.package: package} if package is not None else {}
    facts = {"calls": [], "end": "reboot", "user_data": "unmounted", "tree": tree}
    return Outcome(**{**facts, **changed})


def fault(name, file):
    return Call("main", name, 1, file, -5, True)


def violations(outcome):
    return judge(ROAD, ENTRIES, outcome).violations


class TheReader(unittest.TestCase):
    def test_finds_the_entries(self):
        self.assertEqual(entries_of(packed(ENTRIES)), ENTRIES)

    def test_refuses_what_is_not_whole(self):
        whole = packed(ENTRIES)
        for damaged in (whole[:-1], whole[:-8], whole + b"x", packed(ENTRIES, end=b""),
                        packed(ENTRIES, end=bytes(512)), packed(ENTRIES, end=bytes(1536)), b""):
            with self.assertRaises(NotWhole):
                entries_of(damaged)


class TheVerdict(unittest.TestCase):
    def test_passes_a_run_without_a_fault(self):
        self.assertEqual(violations(run()), [])

    def test_sees_a_false_success(self):
        for package in (None, packed(ENTRIES)[:-1], packed(ENTRIES[1:]), packed(ENTRIES[:1]),
                        packed([(roads.DUMP, b"")] + ENTRIES[1:])):
            self.assertTrue(violations(run(package)))

    def test_sees_a_false_alarm(self):
        self.assertTrue(violations(run(messages=CLAIM)))
        self.assertEqual(violations(run(packed(ENTRIES)[:-1], messages=CLAIM)), [])

    def test_allows_doubt_only_where_the_medium_gives_reason(self):
        file = "/" + ROAD.package
        doubt = run(messages=CLAIM, injected=fault("fsync", file))
        self.assertEqual(violations(doubt), [])
        self.assertTrue(violations(run(messages=CLAIM, injected=fault("close", file))))

    def test_allows_only_what_the_fault_explains(self):
        without_log = packed(ENTRIES[:2])
        at_log = fault("openat", "/tmp/" + roads.LOG)
        self.assertEqual(violations(run(without_log, injected=at_log)), [])
        at_dump = fault("openat", "/tmp/" + roads.DUMP)
        self.assertTrue(violations(run(without_log, injected=at_dump)))

    def test_allows_padding_but_no_change(self):
        at_dump = fault("read", "/tmp/" + roads.DUMP)
        for dump, fine in ((roads.DUMP_BYTES[:100].ljust(len(roads.DUMP_BYTES), b"\0"), True),
                           (roads.DUMP_BYTES[::-1], False)):
            package = packed([(roads.DUMP, dump)] + ENTRIES[1:])
            self.assertEqual(violations(run(package, injected=at_dump)) == [], fine)

    def test_sees_a_bad_end(self):
        self.assertTrue(violations(run(hung=True)))
        self.assertTrue(violations(run(signal="11")))
        self.assertTrue(violations(run(end="exit")))

    def test_sees_a_false_word_about_the_unmount(self):
        self.assertTrue(violations(run(user_data="mounted")))
        self.assertTrue(violations(run(messages="Failed to unmount user_data\n")))

    def test_sees_files_left_behind(self):
        for path in ("tmp/crash_data", "tmp/crash_reporter.abcdef",
                     "user_data/crash_dumps/Crash Report 1.cdp"):
            self.assertTrue(violations(run(tree={ROAD.package: packed(ENTRIES), path: b""})))

    def test_sees_that_an_earlier_package_is_lost(self):
        again = roads.UnattendedAgain()
        tree = {again.package: packed(ENTRIES), **again.earlier}
        self.assertEqual(judge(again, ENTRIES, run(tree=tree)).violations, [])
        tree["user_data/crash_dumps/Crash Report 0.cdp"] = packed(ENTRIES)
        self.assertTrue(judge(again, ENTRIES, run(tree=tree)).violations)


if __name__ == "__main__":
    unittest.main()

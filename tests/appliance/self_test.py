"""The host's judges are judged: what is spoilt must not pass.

    python3 tests/appliance/self_test.py
"""

import gzip
import io
import tarfile
import tempfile
import unittest
from pathlib import Path

import package
import scenario
import words
from machine import Machine
from medium import CheckFailed, Key
from screen import Picture
from text import Shape

DUMP = b"core" * 1000
REPORT = b"""<a><Date>21/11/2026</Date><Time>14:30:05</Time><Serial>SN-0042</Serial>
<Device>R4-220</Device><Version>2.5.1.BETA3</Version></a>"""
LOG = b"12:00:00 audio engine started\n"


def tar_of(entries: dict[str, bytes]) -> bytes:
    file = io.BytesIO()
    with tarfile.open(fileobj=file, mode="w") as archive:
        for name, data in entries.items():
            member = tarfile.TarInfo(name)
            member.size = len(data)
            archive.addfile(member, io.BytesIO(data))
    return file.getvalue()


class PackageJudge(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.entries = {"r4_main.core": DUMP, "report.xml": REPORT, "r4_main.log": LOG}

    def judge(self, data: bytes) -> None:
        file = Path(self.folder.name) / "a.cdp"
        file.write_bytes(data)
        package.check(file, package.Crash(DUMP))

    def refuses(self, data: bytes) -> None:
        with self.assertRaises(CheckFailed):
            self.judge(data)

    def test_a_whole_package_passes(self):
        self.judge(gzip.compress(tar_of(self.entries)))

    def test_every_cut_is_noticed(self):
        whole = gzip.compress(tar_of(self.entries))
        for length in range(len(whole)):
            self.refuses(whole[:length])

    def test_bytes_behind_the_end_are_noticed(self):
        self.refuses(gzip.compress(tar_of(self.entries)) + b"\0")

    def test_missing_end_blocks_are_noticed(self):
        tar = tar_of(self.entries).rstrip(b"\0")
        padded = tar + b"\0" * (-len(tar) % 512)
        self.refuses(gzip.compress(padded))

    def test_another_dump_is_noticed(self):
        self.entries["r4_main.core"] = DUMP[:-1] + b"!"
        self.refuses(gzip.compress(tar_of(self.entries)))

    def test_a_missing_entry_is_noticed(self):
        del self.entries["r4_main.log"]
        self.refuses(gzip.compress(tar_of(self.entries)))

    def test_a_log_that_nobody_named_is_noticed(self):
        file = Path(self.folder.name) / "a.cdp"
        file.write_bytes(gzip.compress(tar_of(self.entries)))
        with self.assertRaises(CheckFailed):
            package.check(file, package.Crash(DUMP, has_log=False))

    def test_only_a_whole_package_is_whole(self):
        file = Path(self.folder.name) / "a.cdp"
        whole = gzip.compress(tar_of(self.entries))
        file.write_bytes(whole)
        self.assertTrue(package.is_whole(file))
        file.write_bytes(whole[:-1])
        self.assertFalse(package.is_whole(file))

    def test_another_serial_number_is_noticed(self):
        self.entries["report.xml"] = REPORT.replace(b"SN-0042", b"SN-0043")
        self.refuses(gzip.compress(tar_of(self.entries)))


class KeyJudge(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.key = Key("A", Path(self.folder.name) / "key.img", "FAT16", 32 << 20, 1 << 20)
        self.key.make()
        self.key.seal()

    def test_a_fresh_key_is_clean_and_empty(self):
        self.key.check_clean()
        self.assertEqual(self.key.files(), [])

    def test_a_worn_key_is_not_clean(self):
        self.key.damage()
        with self.assertRaises(CheckFailed):
            self.key.check_clean()

    def test_one_byte_is_noticed(self):
        with open(self.key.file, "r+b") as file:
            file.seek(20 << 20)
            file.write(b"!")
        self.assertNotEqual(self.key.digest(), self.key.pristine)

    def test_a_file_is_listed_and_a_missing_one_is_noticed(self):
        self.key.put("a b.cdp", b"x")
        self.assertEqual(self.key.files(), ["a b.cdp"])
        with self.assertRaises(CheckFailed):
            self.key.take("b.cdp", Path(self.folder.name) / "b.cdp")

    def test_a_full_key_has_the_room_asked_for(self):
        self.key.fill(1500 << 10)
        self.key.put("fits", b"\0" * (1400 << 10))
        with self.assertRaises(Exception):
            self.key.put("does not", b"\0" * (200 << 10))


class TextJudge(unittest.TestCase):
    SHAPE = Shape.of(4, bytes([0, 255, 255, 0, 255, 0, 128, 255]))

    def pixels(self, *rows: bytes) -> bytes:
        return b"".join(bytes(6) + row + bytes(6) for row in rows)

    def test_a_shape_is_found_where_it_is(self):
        pixels = self.pixels(bytes([0, 1, 1, 0]), bytes([1, 0, 1, 1]))
        self.assertEqual(self.SHAPE.find(pixels, 16), (6, 0))

    def test_one_other_pixel_is_another_text(self):
        pixels = self.pixels(bytes([0, 1, 1, 0]), bytes([1, 1, 1, 1]))
        self.assertIsNone(self.SHAPE.find(pixels, 16))


class MachineTime(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.machine = Machine.__new__(Machine)  # only its log is read
        self.machine.console = Path(folder.name) / "console.log"
        self.machine.console.write_text("init: ready\n[   12.250000] r4: it starts\r\n"
                                        "[  300.5] reboot: Restarting system\r\n")

    def test_is_the_kernels(self):
        self.assertEqual(self.machine.machine_time("r4: it starts"), 12.25)
        self.assertEqual(self.machine.machine_time("reboot: Restarting system"), 300.5)

    def test_what_was_not_said_has_none(self):
        with self.assertRaises(ValueError):
            self.machine.machine_time("r4: it ends")


class Scenarios(unittest.TestCase):
    def test_every_line_is_understood(self):
        for each in scenario.read_all():
            for number, line in each.steps:
                known = any(pattern.fullmatch(line) for pattern, _ in words.WORDS)
                self.assertTrue(known, f"{each.name}, line {number}: {line}")

    def test_every_scenario_expects_something(self):
        for each in scenario.read_all():
            self.assertRegex(each.steps[-1][1], r"^(expect|wait for|\")", each.name)

    def test_every_scenario_has_a_title(self):
        for each in scenario.read_all():
            self.assertTrue(each.title, each.name)


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/env python3
"""Writes the seeds of fuzz_disk_events; the layout stands in tests/fuzz/fuzz_disk_events.cpp."""
import struct

from seed_folder import write_seeds

CREATE, DELETE, IS_FOLDER, OVERFLOW, IGNORED = 0x100, 0x200, 0x40000000, 0x4000, 0x8000


def event(name, mask=CREATE, length=None):
    """As the kernel writes it: the name filled up with zeros to a multiple of 16."""
    name = name.encode() if isinstance(name, str) else name
    size = (len(name) // 16 + 1) * 16 if name else 0
    return struct.pack("<iIII", 1, mask, 0, size if length is None else length) + name.ljust(size, b"\0")


def batch(*events, time_out=False):
    content = b"".join(events)
    return struct.pack(">H", len(content) | (0x8000 if time_out else 0)) + content


WAIT = batch(time_out=True)
write_seeds("disk_events", {
    "disk_alone": batch(event("sdb")) + WAIT,
    "disk_and_partition_together": batch(event("sdb"), event("sdb1")),
    "partition_within_the_second": batch(event("sdb")) + batch(event("sdb1")),
    "partition_of_another_disk": batch(event("sdb")) + batch(event("sdc1")),
    "two_disks_together": batch(event("sdb"), event("sdc")) + WAIT,
    "disk_that_goes_again": batch(event("sdc")) + batch(event("sdc", DELETE)),
    "disk_and_partition_go": batch(event("sdb1", DELETE), event("sdb", DELETE)),
    "old_disk": batch(event("hda"), event("hda10")),
    "other_nodes": batch(event("sg0"), event("tty1"), event("Sdb"), event("sd"), event("s")),
    "name_contains_pending": batch(event("sd"), event("sdz9")),
    "folder": batch(event("sdb", CREATE | IS_FOLDER)),
    "notices_without_name": batch(event("", OVERFLOW), event("", IGNORED), event("sdb1")),
    "made_and_gone_at_once": batch(event("sdb1", CREATE | DELETE)),
    "name_without_zero": batch(event("sd12345678901234", length=16)[:32]),
    "name_longer_than_batch": batch(event("sdb1", length=17)),
    "name_length_largest": batch(event("sdb1", length=0xFFFFFFFF)),
    "name_not_utf8": batch(event(b"sd\xff\xfe1"), event(b"sd\xc3")),
    "name_with_line_end": batch(event("sdb1\n"), event("sdb\n1")),
    "ten_events": batch(*(event(f"sd{letter}1") for letter in "abcdefghij")),
    "header_cut": batch(event("sdb1")[:12]),
    "batch_empty": batch(),
})

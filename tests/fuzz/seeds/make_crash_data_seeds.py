#!/usr/bin/env python3
"""Writes the seeds of fuzz_crash_data into the folder crash_data beside this file.

Each is named for what it shows. The layout of an input stands in
tests/fuzz/fuzz_crash_data.cpp; that of its last part, the crash data file, is the
one the main application writes.
"""
import struct

from seed_folder import write_seeds

DAY = 2461366  # 21 November 2026
MOMENT = 52205250  # 14:30:05.250
LOCAL, UTC, OFFSET, ZONE = 0, 1, 2, 3
INT32_MAX, INT32_MIN = 2**31 - 1, -(2**31)


def units(*codes):
    """Code units as they are, lone surrogates included."""
    return b"".join(struct.pack(">H", code) for code in codes)


def utf16(text):
    return text if isinstance(text, bytes) else text.encode("utf-16-be")


def string(text):
    if text is None:
        return b"\xff\xff\xff\xff"
    return struct.pack(">I", len(utf16(text))) + utf16(text)


def strings(lines):
    return struct.pack(">I", len(lines)) + b"".join(string(line) for line in lines)


def time(day=DAY, milliseconds=MOMENT, spec=LOCAL, rest=b""):
    return struct.pack(">qIb", day, milliseconds, spec) + rest


def offset(seconds, **moment):
    return time(spec=OFFSET, rest=struct.pack(">i", seconds), **moment)


def zone(name, **moment):
    return time(spec=ZONE, rest=string(name), **moment)


def custom_zone(name, seconds, text="", short="", country=0, comment=""):
    fields = string("OffsetFromUtc") + string(name) + struct.pack(">i", seconds)
    fields += string(text) + string(short) + struct.pack(">i", country) + string(comment)
    return time(spec=ZONE, rest=fields)


def crash(path="/var/r4.dump", when=None, lines=("started", "about to crash")):
    return string(path) + (time() if when is None else when) + strings(list(lines))


def block(serial=b"R4-000123", device=3, version=(2, 5, 1, 131), log=b"/var/r4.log"):
    fields = serial.ljust(64, b"\0") + bytes([device, *version]) + log.ljust(256, b"\0")
    return fields + struct.pack("<3xiB3x", -1, 0)


def seed(crash_data, shared=None, comments=""):
    comments = utf16(comments)
    front = b"\0" if shared is None else b"\1" + shared
    return front + struct.pack(">H", len(comments)) + comments + crash_data


def line(*codes):
    return seed(crash(lines=["before", units(*codes), "after"]))


BETWEEN = "between <two> & \"more\" ']]>' </Entry><Entry>"
STRANGE = units(0, 1, 0xB, 0x1F, 0x7F, 0x85, 0xD800, 0xDC00, 0xDFFF, 0xD800, 0x61, 0xFFFE, 0xFFFF)

SEEDS = {
    # As the main application means it.
    "good_complete": seed(crash(), block(), "The belt was running."),
    "good_without_block": seed(crash()),
    "good_without_lines": seed(crash(lines=[]), block()),
    "good_empty_and_null_lines": seed(crash(lines=["", None, ""])),
    "good_null_fields": seed(crash(path=None, when=time(-(2**63), 0xFFFFFFFF))),
    "good_utc": seed(crash(when=time(spec=UTC))),
    "good_offset": seed(crash(when=offset(-5400))),
    "good_zone": seed(crash(when=zone("Europe/Zurich"))),
    "good_custom_zone": seed(crash(when=custom_zone("Plant/Hall", 5400, "Hall time", "HT"))),
    "good_beyond_basic_plane": line(0xD83D, 0xDE00),
    "good_markup_in_texts": seed(crash(lines=[BETWEEN]), block(serial=BETWEEN.encode()), BETWEEN),
    "good_line_ends_and_blanks": seed(crash(lines=["\r", "\r\n", "\n\r", "\t a  ", "\u2028\u0085"]), None, "a\r\nb\rc\n"),
    # Cut, foreign or garbage files.
    "file_empty": seed(b""),
    "file_zeros": seed(bytes(64)),
    "file_ones": seed(b"\xff" * 64),
    "file_ends_in_path": seed(string("/var/r4.dump")[:9]),
    "file_ends_in_time": seed(crash()[:-50]),
    "file_ends_in_list": seed(crash()[:-5]),
    "file_goes_on_after_list": seed(crash() + crash()),
    "file_little_endian": seed(struct.pack("<I", 4) + "/a".encode("utf-16-le") + struct.pack("<qIbI", DAY, MOMENT, LOCAL, 0)),
    "file_older_stream_version": seed(string("/a") + struct.pack(">IIbI", DAY, MOMENT, LOCAL, 0)),
    # Sizes that are not true.
    "count_0x7fffffff": seed(string("/a") + time() + b"\x7f\xff\xff\xff"),
    "count_0x80000000": seed(string("/a") + time() + b"\x80\0\0\0"),
    "count_0xffffffff": seed(string("/a") + time() + b"\xff\xff\xff\xff" + string("a")),
    "count_one_too_many": seed(string("/a") + time() + struct.pack(">I", 3) + string("a") * 2),
    "count_null_lines_to_the_end": seed(string("/a") + time() + struct.pack(">I", 100) + b"\xff" * 400),
    "length_0x7ffffffe": seed(b"\x7f\xff\xff\xfe" + b"a" * 32),
    "length_0xfffffffe": seed(b"\xff\xff\xff\xfe" + b"a" * 32),
    "length_odd": seed(b"\0\0\0\x03abcdef"),
    "length_of_line_0x7ffffffe": seed(string("/a") + time() + b"\0\0\0\x02" + string("a") + b"\x7f\xff\xff\xfe"),
    "length_of_zone_0x7ffffffe": seed(string("/a") + time(spec=ZONE, rest=b"\x7f\xff\xff\xfe")),
    # Times that are none, or far away.
    "time_julian_day_smallest": seed(crash(when=time(-(2**63)))),
    "time_julian_day_largest": seed(crash(when=time(2**63 - 1))),
    "time_julian_day_0": seed(crash(when=time(0, 0))),
    "time_first_date": seed(crash(when=time(-784350574879))),
    "time_last_date": seed(crash(when=time(784354017364))),
    "time_last_date_local_before_utc": seed(crash(when=offset(-50400, day=784354017364, milliseconds=86399999))),
    "time_year_minus_1": seed(crash(when=time(1721059))),
    "time_year_10000": seed(crash(when=time(5373485, spec=UTC))),
    "time_beyond_milliseconds_of_epoch": seed(crash(when=time(106752024800, spec=UTC))),
    "time_after_midnight_of_next_day": seed(crash(when=time(milliseconds=86400000))),
    "time_milliseconds_0xfffffffe": seed(crash(when=time(milliseconds=0xFFFFFFFE))),
    "time_spec_unknown": seed(crash(when=time(spec=4))),
    "time_spec_negative": seed(crash(when=time(spec=-128))),
    "offset_largest": seed(crash(when=offset(INT32_MAX))),
    "offset_smallest": seed(crash(when=offset(INT32_MIN))),
    "offset_at_last_date": seed(crash(when=offset(INT32_MIN, day=784354017364))),
    "zone_empty": seed(crash(when=zone(""))),
    "zone_null": seed(crash(when=zone(None))),
    "zone_unknown": seed(crash(when=zone("Nowhere/At all"))),
    "zone_is_a_folder": seed(crash(when=zone("Europe"))),
    "zone_is_another_file": seed(crash(when=zone("../../../etc/hostname"))),
    "zone_by_rule": seed(crash(when=zone("CET-1CEST,M3.5.0,M10.5.0/3"))),
    "zone_by_impossible_rule": seed(crash(when=zone("<+99>-99:99:99<-9>,M13.9.9/-999,J999/999:99"))),
    "zone_by_rule_at_last_date": seed(crash(when=zone("CET-1CEST,M3.5.0,M10.5.0/3", day=784354017364))),
    "zone_utc_with_offset": seed(crash(when=zone("UTC+14:00"))),
    "zone_utc_with_impossible_offset": seed(crash(when=zone("UTC-99:99:99"))),
    "zone_not_ascii": seed(crash(when=zone(STRANGE))),
    "zone_at_first_date": seed(crash(when=zone("Europe/Zurich", day=-784350574879))),
    "zone_at_last_date": seed(crash(when=zone("Europe/Zurich", day=784354017364))),
    "zone_at_smallest_julian_day": seed(crash(when=zone("America/New_York", day=-(2**63)))),
    "zone_at_hour_that_was_skipped": seed(crash(when=zone("Europe/Zurich", day=2461129, milliseconds=9000000))),
    "zone_in_year_3000": seed(crash(when=zone("America/New_York", day=2817000))),
    "custom_zone_offset_largest": seed(crash(when=custom_zone("x", INT32_MAX))),
    "custom_zone_country_unknown": seed(crash(when=custom_zone("Plant/Hall", 60, country=INT32_MIN))),
    # Texts that XML cannot carry.
    "text_control_characters": line(*range(0x20)),
    "text_c1_controls_and_delete": line(*range(0x7F, 0xA0)),
    "text_lone_high_surrogate_last": line(0x61, 0xD800),
    "text_lone_low_surrogate_first": line(0xDC00, 0x61),
    "text_surrogates_swapped": line(0xDC00, 0xD800),
    "text_two_high_surrogates": line(0xD800, 0xD800, 0xDC00),
    "text_non_characters": line(0xFFFE, 0xFFFF, 0xFDD0, 0xD83F, 0xDFFE),
    "text_byte_order_mark": line(0xFEFF, 0x61),
    "text_surrogates_meet_across_lines": seed(crash(lines=[units(0xD83D), units(0xDE00)])),
    "text_strange_everywhere": seed(crash(path=STRANGE, lines=[STRANGE, STRANGE]), block(serial=bytes(range(1, 64))), STRANGE),
    # Blocks that break their own rules.
    "block_zeros": seed(crash(), bytes(336)),
    "block_ones": seed(crash(), b"\xff" * 336),
    "block_serial_without_end": seed(crash(), block(serial=b"S" * 64)),
    "block_serial_not_ascii": seed(crash(), block(serial=bytes(range(0x7F, 0xBE)))),
    "block_device_type_unknown": seed(crash(), block(device=8)),
    "block_cut": b"\1" + block()[:100],
    # Found by the fuzzer.
    "string_read_in_two_steps": bytes.fromhex("00000000000018002f007600610072002f002e000000006434727500ffffff49611006e17500b6031c96c2030000001a004f0066006600730065007400")
    + b">" * 101
    + bytes.fromhex("460072006f006d005500740063ffaf"),
    "comments_longer_than_input": b"\0\xff\xff" + utf16("a") * 3,
    "comments_of_odd_size": b"\0\0\x03" + utf16("a") + b"b" + crash(),
}

write_seeds("crash_data", SEEDS)

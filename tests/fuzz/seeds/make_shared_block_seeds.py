#!/usr/bin/env python3
"""Writes the seeds of fuzz_shared_block and of fuzz_report_screen: blocks as writers leave them."""
import struct

from seed_folder import write_seeds


def block(serial=b"R4-000123", device=3, version=(2, 5, 1, 131), log=b"/var/r4.log", seconds=-1, flag=0):
    fields = serial.ljust(64, b"\0") + bytes([device, *version]) + log.ljust(256, b"\0")
    return fields + struct.pack("<3xiB3x", seconds, flag)


SEEDS = {
    "good": block(),
    "good_countdown": block(seconds=120),
    "good_unattended": block(seconds=0, flag=1),
    "zeros": bytes(336),
    "ones": b"\xff" * 336,
    "page": block() + b"x" * 600,
    "cut_after_serial": block()[:64],
    "serial_empty": block(serial=b""),
    "serial_without_end": block(serial=b"S" * 64),
    "serial_without_end_wide": block(serial=b"W" * 64),
    "serial_one_below_field": block(serial=b"S" * 63),
    "serial_markup": block(serial=b"<b>&amp;<img src=/etc/passwd>"),
    "serial_line_ends": block(serial=b"\n" * 63),
    "serial_variants": block(serial=b"a\n\n\n\x9c"),
    "serial_lines_of_every_kind": block(serial=b"a\nb\rc\r\nd\x0be\x0cf\x85g\t\th"),
    "serial_control_characters": block(serial=bytes(range(1, 32))),
    "serial_not_ascii": block(serial=bytes(range(0x7F, 0xBE))),
    "serial_blanks": block(serial=b" " * 60),
    "log_path_without_end": block(log=b"/" + b"p" * 255),
    "log_path_without_end_goes_on": block(log=b"p" * 256, seconds=0x70707070),
    "device_below_models": block(device=1),
    "device_above_models": block(device=8),
    "version_largest": block(version=(255, 255, 255, 255)),
    "version_release_with_number": block(version=(1, 0, 0, 5)),
    "seconds_largest": block(seconds=2**31 - 1),
    "seconds_smallest": block(seconds=-(2**31)),
    "flag_any": block(seconds=0, flag=0x80),
}


def dated(day, milliseconds=52205250):
    return block() + struct.pack(">qI", day, milliseconds)


DATES = {
    "time": dated(2461366),
    "time_of_the_longest_words": dated(2461307),  # Wednesday 23 September 2026
    "time_cut": dated(2461366)[:-1],
    "time_first_date": dated(-784350574879),
    "time_last_date": dated(784354017364, 86399999),
    "time_beyond_last_date": dated(784354017365),
    "time_year_minus_1": dated(1721059),
    "time_after_midnight_of_next_day": dated(2461366, 86400000),
}
write_seeds("shared_block", SEEDS)
write_seeds("report_screen", {**SEEDS, **DATES})

#!/usr/bin/env python3
"""Writes the seeds of fuzz_file_names; the layout stands in tests/fuzz/fuzz_file_names.cpp."""
from seed_folder import write_seeds


def seed(name, *filters):
    texts = [text.encode() for text in filters]
    fields = b"".join(bytes([len(text)]) + text for text in texts)
    return bytes([len(texts)]) + fields + (name if isinstance(name, bytes) else name.encode("utf-16-be"))


write_seeds("file_names", {
    "name_plain": seed("report", "*.cdp"),
    "name_with_extension": seed("report.cdp", "*.cdp"),
    "name_with_extension_upper_case": seed("report.CDP", "*.cdp"),
    "name_with_other_extension": seed("report.txt", "*.cdp"),
    "name_is_extension": seed(".cdp", "*.cdp"),
    "name_empty": seed("", "*.cdp"),
    "name_folder_itself": seed(".", "*.cdp"),
    "name_folder_above": seed("..", "*.cdp"),
    "name_three_dots": seed("...", "*.cdp"),
    "name_dot_and_separator": seed("./", "*.cdp"),
    "name_dots_parted_by_zero": seed(".\0.", "*.cdp"),
    "name_dots_parted_by_separator": seed("./.", "*.cdp"),
    "name_climbs": seed("../../etc/passwd", "*.cdp"),
    "name_absolute": seed("/etc/passwd", "*.cdp"),
    "name_with_zero": seed("report\0.cdp", "*.cdp"),
    "name_of_separators": seed("////", "*.cdp"),
    "name_blanks": seed("  ", "*.cdp"),
    "name_like_a_separator": seed("a\u2044b\uff0fc", "*.cdp"),
    "name_lone_surrogates": seed(b"\xd8\x00\xdc\x00\xdc\x00\xd8\x00", "*.cdp"),
    "name_right_to_left": seed("\u202epdc.report", "*.cdp"),
    "name_300_letters": seed("n" * 300, "*.cdp"),
    "filters_none": seed("report"),
    "filters_two": seed("report.b", "*.a", "*.b"),
    "filters_first_without_extension": seed("report", "*", "*.b"),
    "filters_empty": seed("report", "", ""),
    "filter_of_dots": seed("..", ".."),
    "filter_of_one_dot": seed("a", "*."),
    "filter_of_two_extensions": seed("a.tar", "*.tar.gz"),
})

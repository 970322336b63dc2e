#!/usr/bin/env python3
"""Writes the seeds of fuzz_version; the layout stands in tests/fuzz/fuzz_version.cpp."""
from seed_folder import write_seeds


def seed(text, version=(2, 5, 1, 131)):
    return bytes(version) + text.encode()


write_seeds("version", {
    "text_two_numbers": seed("2.5"),
    "text_three_numbers": seed("2.5.1"),
    "text_candidate_after_blank": seed("2.5.1 RC2"),
    "text_candidate_after_dot": seed("2.5.1.RC2"),
    "text_beta_without_patch": seed("2.5.BETA3"),
    "text_debug": seed("1.2.3.DEBUG7"),
    "text_kind_without_separator": seed("2.5.1RC2"),
    "text_kind_without_number": seed("2.5.1.RC"),
    "text_kind_in_lower_case": seed("2.5.1.rc2"),
    "text_number_spills_into_kind": seed("1.2.3.RC64"),
    "text_numbers_past_8_bits": seed("300.256.1000"),
    "text_number_largest": seed("4294967295.1"),
    "text_number_past_32_bits": seed("4294967296.4294967297"),
    "text_digits_of_other_scripts": seed("\u0663.\uff15.1"),
    "text_leading_zeros": seed("00000000000000000002.5"),
    "text_fourth_number": seed("1.2.3.4"),
    "text_line_end": seed("2.5\n"),
    "text_empty": seed(""),
    "pattern_all": seed("%M.%m.%p.%n %T %t %B %b"),
    "pattern_all_of_release": seed("%M.%m.%p.%n %T %t %B %b", (1, 0, 0, 5)),
    "pattern_section_kept": seed("%M.%m< %B>", (1, 0, 0, 64)),
    "pattern_section_left_out": seed("%M.%m< %B>", (1, 0, 0, 0)),
    "pattern_section_with_number_0": seed("<.%p>", (1, 0, 0, 0)),
    "pattern_section_in_section": seed("<%M<%m>%p>"),
    "pattern_section_never_closed": seed("a<b%M"),
    "pattern_closing_alone": seed("%M>%m"),
    "pattern_percent_last": seed("%M%"),
    "pattern_percent_before_section": seed("%<%M>%"),
    "pattern_percent_twice": seed("%%M"),
    "pattern_unknown_letter": seed("%x%M"),
    "bytes_release_with_number": bytes((1, 2, 3, 5, 1, 2, 3, 5)),
    "bytes_of_three": bytes((1, 2, 3, 192, 1, 2, 3)),
})

"""The words that scenarios are written in: one pattern and one short function each."""

import re
import time

import package
from medium import MEGABYTE, PARTITION_START, Key, fail
from machine import Machine
from stage import PATIENCE, Stage
from states import CRASH_SCREEN, READY

WORDS: list[tuple[re.Pattern, callable]] = []
SAVE_PARTS = 12
# Somewhat more than is written of the dump of the crash, which cannot be compressed.
BYTES_OF_A_SAVE = 3 << 20


def words(pattern: str):
    def add(function):
        WORDS.append((re.compile(pattern), function))
        return function
    return add


def play(stage: Stage, line: str) -> None:
    for pattern, function in WORDS:
        found = pattern.fullmatch(line)
        if found:
            function(stage, *found.groups())
            return
    raise SyntaxError(f"nobody knows what this means: {line}")


# Keys and disks before the start

@words(r"key (\w) is (\d+) MiB of (FAT12|FAT16|FAT32|exFAT|ext4|nothing)(, in a partition)?")
def make_key(stage, name, size, kind, partition):
    key = Key(name, stage.folder / f"key{name}.img", kind, int(size) * MEGABYTE,
              PARTITION_START if partition else 0)
    key.make()
    key.seal()
    stage.keys[name] = key


@words(r"key (\w) is write-protected")
def protect(stage, name):
    stage.keys[name].read_only = True


@words(r"key (\w) has room for (\d+) KiB")
def fill_key(stage, name, kibibytes):
    stage.keys[name].fill(int(kibibytes) << 10)
    stage.keys[name].seal()


@words(r"key (\w) is worn: its file allocation table is garbage")
def damage(stage, name):
    stage.keys[name].damage()
    stage.keys[name].seal()


@words(r"key (\w) is worn: its boot sector is garbage")
def wipe(stage, name):
    stage.keys[name].wipe_boot_sector()
    stage.keys[name].seal()


@words(r"key (\w) takes (\d+) KiB a second")
def pace(stage, name, kibibytes):
    stage.keys[name].bytes_per_second = int(kibibytes) << 10


# The start

@words(r"start at the crash screen")
def start_at_crash_screen(stage):
    stage.restore(CRASH_SCREEN)
    stage.pointer_was_moved = True


@words(r"the dump is (\d+) times as large")
def enlarge_dump(stage, times):
    """Copied in the main memory, before the crash."""
    stage.machine.guest(f"for n in $(seq {times}); do cat /srv/r4_main.core; done "
                        ">/tmp/r4_main.core", 120)
    stage.crash.dump_repeats = int(times)


@words(r"start before the crash")
def start_before_crash(stage):
    stage.restore(READY)


@words(r"switch on(?:, with (a clock .*?|the clock .*?))?(?:, with key (\w) plugged)?")
def switch_on(stage, clock, key):
    stage.boot(clock or "", keys=[key] if key else [])


@words(r"inside: (.*)")
def inside(stage, command):
    stage.machine.guest(command, 120)


@words(r'the main application said (\w+) "(.*)"')
def main_application_said(stage, fact, value):
    """What the package must tell, where it is not what guest/play_crash always says."""
    stage.crash.facts[fact] = value


@words(r"the main application named no log")
def named_no_log(stage):
    stage.crash.has_log = False


@words(r"the dump is (/\w+)")
def other_dump(stage, path):
    stage.machine.guest(f"ln /srv/r4_main.core {path}")
    stage.crash.dump_name = path.removeprefix("/")


@words(r"crash(?: with (.*))?")
def crash(stage, options):
    stage.machine.guest(f"play_crash {options or ''}")


# Hands

@words(r"plug key (\w)")
def plug(stage, name):
    stage.plug(name)


@words(r"pull key (\w)")
def pull(stage, name):
    stage.pull(name)


@words(r"pull key (\w) when (\d+) of 12 parts are written")
def pull_during_save(stage, name, part):
    before = stage.bytes_written(name)
    wanted = before + int(part) * BYTES_OF_A_SAVE // SAVE_PARTS
    deadline = time.monotonic() + PATIENCE
    while stage.bytes_written(name) < wanted:
        if time.monotonic() > deadline:
            fail(f"the save wrote only {stage.bytes_written(name) - before} bytes")
        time.sleep(0.01)
    stage.pull(name)


@words(r'click "(.*)"')
def click(stage, text):
    stage.click(text)


KEYS = {" ": "spc", ".": "dot", "-": "minus", "/": "slash", ",": "comma", "'": "apostrophe"}


@words(r"save as \"(.*)\"")
def save_as(stage, name):
    """Up to the point where the save begins."""
    stage.click("Save")
    stage.wait_for("Save crash report")
    type_text(stage, name)
    press(stage, "Return")


TIME_OF_CRASH = "14:30:05 on Saturday 21 November 2026"
SAVED = "Crash report successfully saved."
NOT_SAVED = "There was a problem saving the crash report."


@words(r"expect to be told the truth about \"(.*)\" on key (\w)")
def expect_truth(stage, name, key):
    """Either message will do, but the success must be one."""
    deadline = time.monotonic() + PATIENCE
    while not (told := [text for text in (SAVED, NOT_SAVED) if stage.is_shown(text)]):
        if time.monotonic() > deadline:
            fail("neither success nor failure came up")
        time.sleep(0.1)
    if told == [SAVED]:
        package.check(taken(stage, name, f"key {key}"), stage.crash)


@words(r'type "(.*)"')
def type_text(stage, text):
    for letter in text:
        key = KEYS.get(letter, letter.lower())
        stage.machine.press(*(["shift"] if letter.isupper() else []), key)


@words(r"press (\w+)")
def press(stage, key):
    names = {"Return": "ret", "Escape": "esc", "Tab": "tab", "Space": "spc"}
    stage.machine.press(names[key])


@words(r"wait (\d+(?:\.\d+)?) s")
def wait(stage, seconds):
    time.sleep(float(seconds))


# Eyes

@words(r'wait for "(.*?)"(?:, at most (\d+) s)?')
def wait_for(stage, text, seconds):
    stage.wait_for(text, float(seconds or PATIENCE))


@words(r'wait until "(.*)" is gone')
def wait_until_gone(stage, text):
    stage.wait_until_gone(text)


@words(r'"(.*)" is shown')
def is_shown(stage, text):
    if not stage.is_shown(text):
        fail(f"{text!r} is not on the screen")


@words(r'"(.*)" is not shown')
def is_not_shown(stage, text):
    if stage.is_shown(text):
        fail(f"{text!r} is on the screen")


@words(r"expect the crash screen for every prefix of (\S+), with the time from (\d+) bytes on")
def expect_every_prefix(stage, file, time_from):
    """Each in a run of its own, which takes the file away and is then killed."""
    for length in range(int(stage.machine.guest(f"stat -c %s {file}")) + 1):
        stage.machine.guest("dd if=/dev/zero of=/dev/fb0 bs=64k 2>/dev/null; "
                            f"head -c {length} {file} >/tmp/prefix; "
                            "play_crash --raw-file /tmp/prefix --crash-file /tmp/crash_file")
        stage.wait_for("Shutdown")
        if stage.is_shown(TIME_OF_CRASH) != (length >= int(time_from)):
            fail(f"the time on the screen is wrong for a prefix of {length} bytes")
        stage.machine.guest("[ ! -e /tmp/crash_file ] && kill -KILL $(pidof crash_reporter); "
                            "while pidof crash_scenario >/dev/null; do usleep 20000; done")


@words(r'expect "(.*)" in the log')
def expect_in_log(stage, text):
    stage.machine.wait_for_console(text, PATIENCE)


@words(r'"(.*)" is not in the log')
def is_not_in_log(stage, text):
    if text in stage.machine.console.read_text(errors="replace"):
        fail(f"{text!r} is in the log")


# The end

@words(r"expect reboot(?:, at most (\d+) s)?")
def expect_reboot(stage, seconds):
    machine: Machine = stage.machine
    machine.wait_for_end(float(seconds or PATIENCE))
    if machine.qmp.has_event("WATCHDOG"):
        fail("it was the watchdog that reset the machine")
    reasons = [event["data"].get("reason") for event in machine.qmp.events
               if event["event"] == "SHUTDOWN"]
    if reasons != ["guest-reset"]:
        fail(f"the machine ended with {reasons}, not with a reboot")


@words(r"expect watchdog(?:, at most (\d+) s)?")
def expect_watchdog(stage, seconds):
    stage.machine.qmp.wait_for_event("WATCHDOG", float(seconds or PATIENCE))


@words(r"expect no watchdog for (\d+) s of the machine's time")
def expect_no_watchdog(stage, seconds):
    uptime = lambda: float(stage.machine.guest("cat /proc/uptime").split()[0])
    end = uptime() + int(seconds)
    while uptime() < end:
        expect_not_bitten(stage)


@words(r"expect no watchdog")
def expect_not_bitten(stage):
    stage.machine.qmp.poll()
    if stage.machine.qmp.has_event("WATCHDOG"):
        fail("the watchdog has bitten")


@words(r'expect more than (\d+) s of the machine\'s time between "(.*)" and "(.*)"')
def expect_machine_time(stage, seconds, first, last):
    passed = stage.machine.machine_time(last) - stage.machine.machine_time(first)
    if passed <= int(seconds):
        fail(f"it took {passed:.1f} s of the machine's time")


@words(r"cut the power(?: (\d+) ms later)?")
def cut_power(stage, milliseconds):
    time.sleep(int(milliseconds or 0) / 1000)
    stage.machine.cut_power()


# What is left, as other tools find it

def taken(stage, name, where):
    target = stage.folder / "found.cdp"
    target.unlink(missing_ok=True)
    if where == "the internal disk":
        return stage.internal.take(name, target)
    return stage.keys[where.removeprefix("key ")].take(name, target)


WHERE = r"(key \w|the internal disk)"


@words(rf'expect package "(.*)" on {WHERE}')
def expect_package(stage, name, where):
    if where == "the internal disk":
        stage.switch_off()
    package.check(taken(stage, name, where), stage.crash)


@words(rf'expect "(.*)" in the comments of "(.*)" on {WHERE}')
def expect_comments(stage, text, name, where):
    found = package.comments(taken(stage, name, where))
    if found != text:
        fail(f"the comments are {found!r}")


@words(rf"expect only (.*) on {WHERE}")
def expect_only(stage, names, where):
    if where == "the internal disk":
        stage.switch_off()
        found = stage.internal.files()
    else:
        found = stage.keys[where.removeprefix("key ")].files()
    expected = sorted(re.findall(r'"(.*?)"', names)) if names != "no file" else []
    if found != expected:
        fail(f"on {where} there are {found}")


@words(r"expect no whole package on the internal disk")
def expect_no_whole_package(stage):
    stage.switch_off()
    for name in stage.internal.files():
        if package.is_whole(taken(stage, name, "the internal disk")):
            fail(f"{name!r} on the internal disk is whole")


@words(r"expect key (\w) clean")
def expect_clean_key(stage, name):
    stage.keys[name].check_clean()


@words(r"expect key (\w) untouched")
def expect_untouched(stage, name):
    if stage.keys[name].digest() != stage.keys[name].pristine:
        fail(f"key {name} was written to")


@words(r"expect the internal disk clean")
def expect_clean_internal(stage):
    stage.switch_off()
    stage.internal.check_clean()


@words(r"expect the internal disk unmounted")
def expect_unmounted_internal(stage):
    stage.switch_off()
    if not stage.internal.was_unmounted():
        fail("the internal disk still needs its journal")

"""Reads a crash dump package with other tools than made it, and judges it."""

import hashlib
import tarfile
import zlib
from dataclasses import dataclass, field
from pathlib import Path
from xml.etree import ElementTree

from medium import CheckFailed, attempt, fail

TAR_END = b"\0" * 1024
# What guest/play_crash says of the appliance and of the crash.
FACTS = {"Date": "21/11/2026", "Time": "14:30:05", "Serial": "SN-0042", "Device": "R4-220",
         "Version": "2.5.1.BETA3"}


@dataclass
class Crash:
    """What a package must tell of; the dump is of so many repeats."""
    dump: bytes
    dump_name: str = "r4_main.core"
    dump_repeats: int = 1
    has_log: bool = True
    facts: dict[str, str] = field(default_factory=FACTS.copy)


def unpack_strictly(package: Path) -> bytes:
    """One gzip member whose trailer is right, nothing behind it, and tar's two end blocks."""
    reader = zlib.decompressobj(wbits=31)
    try:
        data = reader.decompress(package.read_bytes())
    except zlib.error as error:
        fail(f"{package.name} is no whole gzip: {error}")
    if not reader.eof:
        fail(f"{package.name} breaks off: gzip's trailer is missing")
    if reader.unused_data:
        fail(f"{package.name} has {len(reader.unused_data)} bytes behind its end")
    if not data.endswith(TAR_END):
        fail(f"{package.name} lacks tar's end blocks")
    return data


def members(package: Path) -> dict[str, bytes]:
    unpack_strictly(package)
    for command in (["gzip", "-t", "--suffix=.cdp", package], ["tar", "-tzf", package]):
        status, output = attempt(*command)
        if status != 0:
            fail(f"{command[0]} on {package.name}: {output}")
    with tarfile.open(package) as archive:
        return {member.name: archive.extractfile(member).read() for member in archive}


def check(package: Path, crash: Crash) -> None:
    """Whole, and of that crash."""
    found = members(package)
    if list(found) != [crash.dump_name, "report.xml"] + ["r4_main.log"] * crash.has_log:
        fail(f"{package.name} holds {list(found)}")
    expected = hashlib.sha256(crash.dump * crash.dump_repeats).hexdigest()
    if hashlib.sha256(found[crash.dump_name]).hexdigest() != expected:
        fail(f"the dump in {package.name} is not the one of the crash")
    if crash.has_log and b"audio engine started" not in found["r4_main.log"]:
        fail(f"the log in {package.name} is not the main application's")
    report = ElementTree.fromstring(found["report.xml"])
    for name, value in crash.facts.items():
        element = report.find(f".//{name}")
        text = "" if element is None else element.text or ""
        if element is None or text != value:
            fail(f"{name} in {package.name}'s report is {text!r}, not {value!r}")


def is_whole(package: Path) -> bool:
    try:
        members(package)
    except CheckFailed:
        return False
    return True


def comments(package: Path) -> str:
    report = ElementTree.fromstring(members(package)["report.xml"])
    return report.findtext(".//Comments") or ""

"""USB keys and internal disks as files: made, spoilt and examined without the guest."""

import hashlib
import os
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

from image import run

MEGABYTE = 1 << 20
PARTITION_START = 2048 * 512
FAT = {"FAT12": 12, "FAT16": 16, "FAT32": 32}


class CheckFailed(Exception):
    """What was found is not what the scenario expects."""


def fail(text: str) -> None:
    raise CheckFailed(text)


def attempt(*command, **settings: str) -> tuple[int, str]:
    done = subprocess.run([str(word) for word in command], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, env={**os.environ, **settings})
    return done.returncode, done.stdout


@dataclass
class Key:
    name: str
    file: Path
    kind: str
    size: int
    offset: int = 0
    read_only: bool = False
    bytes_per_second: int = 0
    worn: bool = False
    pristine: str = ""

    @property
    def mtools_name(self) -> str:
        return f"{self.file}@@{self.offset}"

    def make(self) -> None:
        with open(self.file, "wb") as file:
            file.truncate(self.size)
        if self.offset:
            kind = "7" if self.kind == "exFAT" else "83" if self.kind == "ext4" else "c"
            subprocess.run(["sfdisk", "-q", self.file], check=True, stdout=subprocess.DEVNULL,
                           input=f"2048,,{kind}\n".encode())
        volume = self.file.with_suffix(".volume")
        with open(volume, "wb") as file:
            file.truncate(self.size - self.offset)
        if self.kind in FAT:
            # A small FAT32 needs small clusters, or mtools takes it for FAT16.
            clusters = ["-s", "1"] if self.kind == "FAT32" else []
            run("mkfs.vfat", "-F", FAT[self.kind], *clusters, volume)
        elif self.kind == "exFAT":
            run("mkfs.exfat", volume)
        elif self.kind == "ext4":
            run("mkfs.ext4", "-q", "-F", volume)
        run("dd", f"if={volume}", f"of={self.file}", "bs=512", f"seek={self.offset // 512}",
            "conv=notrunc,sparse", "status=none")
        volume.unlink()

    def fill(self, room: int) -> None:
        """With one file, up to about `room` bytes."""
        free = int(re.search(r"([\d ]+) bytes free", run("mdir", "-i", self.mtools_name, "::"))
                   .group(1).replace(" ", ""))
        filler = self.file.with_suffix(".filler")
        with open(filler, "wb") as file:
            file.truncate(free - room)
        run("mcopy", "-i", self.mtools_name, filler, "::FILLER.BIN")
        filler.unlink()

    def put(self, name: str, data: bytes) -> None:
        source = self.file.with_suffix(".put")
        source.write_bytes(data)
        run("mcopy", "-i", self.mtools_name, source, f"::{name}")
        source.unlink()

    def wipe_boot_sector(self) -> None:
        with open(self.file, "r+b") as file:
            file.seek(self.offset)
            file.write(hashlib.sha512(b"a dead key").digest() * 8)

    def damage(self) -> None:
        """Breaks the first FAT and what follows of it; the boot sector still looks right."""
        with open(self.file, "r+b") as file:
            file.seek(self.offset)
            boot = file.read(512)
            reserved = int.from_bytes(boot[14:16], "little")
            file.seek(self.offset + reserved * 512)
            file.write(hashlib.sha512(b"a worn key").digest() * 64)
        self.worn = True

    def seal(self) -> None:
        self.pristine = self.digest()

    def digest(self) -> str:
        with open(self.file, "rb") as file:
            return hashlib.file_digest(file, "sha256").hexdigest()

    # What is on it afterwards

    def volume(self) -> Path:
        volume = self.file.with_suffix(".volume")
        run("dd", f"if={self.file}", f"of={volume}", "bs=1M", f"skip={self.offset}",
            "iflag=skip_bytes", "conv=sparse", "status=none")
        return volume

    def check_clean(self) -> None:
        status, output = attempt("fsck.vfat", "-n", self.volume())
        if status != 0:
            fail(f"key {self.name} is not clean: {output}")

    def files(self) -> list[str]:
        status, listing = attempt("mdir", "-/", "-b", "-i", self.mtools_name, "::")
        if 'File "::" not found' in listing:
            return []  # its way of saying that there is none
        if status != 0:
            fail(f"key {self.name} cannot be listed: {listing}")
        return sorted(line.removeprefix("::/") for line in listing.splitlines() if line)

    def take(self, name: str, target: Path) -> Path:
        # mtools refuses a worn key that the kernel still reads and writes.
        settings = {"MTOOLS_SKIP_CHECK": "1"} if self.worn else {}
        status, output = attempt("mcopy", "-n", "-i", self.mtools_name, f"::{name}", target,
                                 **settings)
        if status != 0:
            fail(f"no {name!r} on key {self.name}: {output.strip()[-300:]}")
        return target


class InternalDisk:
    """ext4 without partitions, as an overlay over what all runs share."""

    def __init__(self, overlay: Path):
        self.overlay = overlay

    @staticmethod
    def make_base(target: Path, size: int) -> None:
        raw = target.with_suffix(".raw")
        with open(raw, "wb") as file:
            file.truncate(size)
        run("mkfs.ext4", "-q", "-F", "-L", "user_data", raw)
        run("qemu-img", "convert", "-O", "qcow2", raw, target)
        raw.unlink()

    def lay_over(self, base: Path) -> None:
        run("qemu-img", "create", "-q", "-f", "qcow2", "-F", "qcow2", "-b", base, self.overlay)

    def recovered(self) -> Path:
        """A copy as the next start would find it: with its journal played back."""
        raw = self.overlay.with_suffix(".raw")
        run("qemu-img", "convert", "-O", "raw", self.overlay, raw)
        status, output = attempt("e2fsck", "-E", "journal_only", "-p", raw)
        if status > 1:
            fail(f"the internal disk's journal cannot be played back: {output}")
        return raw

    def check_clean(self) -> None:
        status, output = attempt("e2fsck", "-f", "-n", self.recovered())
        if status != 0:
            fail(f"the internal disk is not clean: {output}")

    def was_unmounted(self) -> bool:
        raw = self.overlay.with_suffix(".raw")
        run("qemu-img", "convert", "-O", "raw", self.overlay, raw)
        features = run("dumpe2fs", "-h", raw, stderr=subprocess.DEVNULL)
        return "needs_recovery" not in features

    def files(self) -> list[str]:
        listing = run("debugfs", "-R", "ls -p /crash_dumps", self.recovered(),
                      stderr=subprocess.DEVNULL)
        names = [line.split("/")[5] for line in listing.splitlines() if line.count("/") >= 6]
        return sorted(name for name in names if name not in (".", ".."))

    def take(self, name: str, target: Path) -> Path:
        if name not in self.files():
            fail(f"no {name!r} on the internal disk; there are {self.files()}")
        run("debugfs", "-R", f'dump "/crash_dumps/{name}" {target}', self.recovered(),
            stderr=subprocess.DEVNULL)
        return target

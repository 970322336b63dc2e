"""Makes files that compress like a core image of the main application."""
import random
import struct
from pathlib import Path

MEBIBYTE = 1 << 20
PIECE = 64 * 1024  # a run of pages of one kind
HOLES, CODE = 0.6, 0.2  # shares; the rest is heap
LIBRARIES = Path("/usr/lib/x86_64-linux-gnu")


def elf_header():
    """As far as `file` looks: a 64-bit little-endian core image for x86-64."""
    identification = b"\x7fELF\x02\x01\x01" + bytes(9)
    return identification + struct.pack("<HHIQQQIHHHHHH", 4, 62, 1, 0, 64, 0, 0, 64, 56, 0, 0, 0, 0)


def code_pages():
    """Machine code: the largest shared objects of this system, one after another."""
    objects = {path.resolve() for path in LIBRARIES.glob("*.so*") if path.is_file()}
    largest = sorted(objects, key=lambda path: (-path.stat().st_size, path.name))[:8]
    return b"".join(path.read_bytes()[: 8 * MEBIBYTE] for path in largest)


def heap_pages(chance, size=8 * MEBIBYTE):
    """Objects as an allocator lays them: sizes, pointers, small numbers, bits of text."""
    words = [b"conveyor", b"/user_data/", b"temperature", b"QObject", b"axis ", b"ready\n"]
    pages = bytearray()
    while len(pages) < size:
        pages += struct.pack("<QQ", 0, chance.choice((0x21, 0x31, 0x51, 0x91)))
        for _ in range(chance.randrange(1, 8)):
            pages += struct.pack("<Q", 0x7F3A00000000 + 16 * chance.randrange(1 << 20))
        pages += struct.pack("<IId", chance.randrange(1000), 0, chance.random())
        pages += chance.choice(words) * chance.randrange(3) + bytes(chance.randrange(48))
    return bytes(pages[:size])


def piece_of(pages, chance):
    start = chance.randrange((len(pages) - PIECE) // 4096) * 4096
    return pages[start : start + PIECE]


def write_core_image(path, size, seed=1):
    """`size` bytes, the same ones for the same seed and the same installed libraries.

    Holes are left as holes, the way the kernel writes a core image.
    """
    chance = random.Random(seed)
    code, heap = code_pages(), heap_pages(chance)
    with open(path, "wb") as file:
        file.write(elf_header())
        for offset in range(PIECE, size, PIECE):
            kind = chance.random()
            if kind < HOLES:
                continue
            file.seek(offset)
            file.write(piece_of(code if kind < HOLES + CODE else heap, chance))
        file.truncate(size)

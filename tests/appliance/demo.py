"""The attended story, from the crash to the package on the key, with numbered pictures."""

import shutil
import struct
import subprocess
import zlib

import image
import package
import paths
from screen import Picture
from stage import Stage
from states import CRASH_SCREEN
from text import TextFinder
from words import make_key, play

NO_KEY = "Failed to detect a USB disk.  Please ensure your USB disk is correctly"
STORY = [
    ("crash-screen", ['wait for "R4 Error Reporter"']),
    ("no-key", ['click "Save"', f'wait for "{NO_KEY}"']),
    ("file-dialog", ["press Return", "plug key A", 'click "Save"', 'wait for "Save crash report"']),
    ("named", ['type "act 2"', "wait 1 s"]),
    ("saved", ["press Return", 'wait for "Crash report successfully saved."']),
    ("shut-down", ["press Return", "pull key A", 'click "Shutdown"',
                   'wait until "R4 Error Reporter" is gone']),
]


def write_png(picture: Picture, file) -> None:
    row = picture.width * 3
    raw = b"".join(b"\0" + picture.pixels[start:start + row]
                   for start in range(0, len(picture.pixels), row))

    def chunk(kind: bytes, data: bytes) -> bytes:
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))

    header = struct.pack(">IIBBBBB", picture.width, picture.height, 8, 2, 0, 0, 0)
    file.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                     + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b""))


def play_story(stage: Stage) -> None:
    make_key(stage, "A", "64", "FAT32", ", in a partition")
    stage.restore(CRASH_SCREEN)
    for number, (name, steps) in enumerate(STORY, 1):
        for step in steps:
            play(stage, step)
        file = paths.DEMO / f"{number}-{name}.png"
        write_png(stage.machine.screen(), file)
        print(f"  {file.relative_to(paths.PROJECT)}", flush=True)


def play_demo(finder: TextFinder) -> int:
    shutil.rmtree(paths.DEMO, ignore_errors=True)
    paths.DEMO.mkdir(parents=True)
    stage = Stage(paths.RUNS / "demo", finder, image.dump())
    try:
        play_story(stage)
    finally:
        stage.close()
    found = stage.keys["A"].take("act 2.cdp", paths.DEMO / "act 2.cdp")
    package.check(found, stage.crash)
    print("What tar finds in the package on the key:", flush=True)
    subprocess.run(["tar", "-tvzf", found], check=True)
    return 0

"""Finds text on a picture of the screen: what the operator reads, as the toolkit draws it."""

import re
import subprocess
from dataclasses import dataclass
from functools import lru_cache
from pathlib import Path

import image
import paths
from screen import Picture

# Coverage around a half may fall on either side of what counts as light on the screen.
SURELY_DARK, SURELY_LIGHT = 70, 185
# Half way from the dark background to white, from a coloured button's, from the backdrop's.
LIGHT_FROM = (140, 182, 212)
# As guest/start_reporter sets it.
DOTS_PER_INCH = 96
_BINARIES = [bytes(1 if value >= limit else 0 for value in range(256)) for limit in LIGHT_FROM]


@dataclass(frozen=True)
class Shape:
    """One way a text may be drawn: a pattern a row, on pixels that are 0 dark or 1 light."""
    width: int
    rows: tuple[re.Pattern, ...]
    run: bytes
    run_x: int
    run_y: int

    @staticmethod
    def of(width: int, coverage: bytes) -> "Shape":
        rows = [coverage[start:start + width] for start in range(0, len(coverage), width)]
        sure = [bytes(0 if v < SURELY_DARK else 1 if v > SURELY_LIGHT else 2 for v in row)
                for row in rows]
        patterns = tuple(re.compile(row.replace(b"\x02", b"[\x00\x01]")) for row in sure)
        # Looked for first: the pixels in a row that are hardest to find by chance.
        runs = [(found.group(), found.start(), y) for y, row in enumerate(sure)
                for found in re.finditer(b"[\x00\x01]+", row)]
        return Shape(width, patterns, *max(runs, key=lambda run: changes(run[0])))

    def find(self, pixels: bytes, picture_width: int):
        position = pixels.find(self.run)
        while position >= 0:
            top = position - self.run_x - self.run_y * picture_width
            if top >= 0 and all(row.match(pixels, top + y * picture_width)
                                for y, row in enumerate(self.rows)):
                return top % picture_width, top // picture_width
            position = pixels.find(self.run, position + 1)
        return None


def changes(run: bytes) -> int:
    return run.count(b"\x00\x01") + run.count(b"\x01\x00")


def image_fonts() -> Path:
    """The program's own configuration, on the fonts of the image in place of this machine's."""
    file = paths.BUILD / "fonts.conf"
    text = image.FONT_CONFIGURATION.read_text()
    file.write_text(text.replace("dir>/", f"dir>{paths.ROOT}/"))
    return file


class TextFinder:
    def __init__(self, program: Path):
        self.program = program

    @lru_cache(maxsize=None)
    def shapes(self, text: str) -> tuple[Shape, ...]:
        settings = {"QT_QPA_PLATFORM": "offscreen", "LANG": "C.UTF-8", "HOME": str(paths.BUILD),
                    "QT_FONT_DPI": str(DOTS_PER_INCH), "FONTCONFIG_FILE": str(image_fonts())}
        lines = image.run(self.program, text, env=settings,
                          stderr=subprocess.DEVNULL).splitlines()
        found = []
        for line in lines:
            _, width, _, coverage = line.split()
            found.append(Shape.of(int(width), bytes.fromhex(coverage)))
        return tuple(found)

    def find(self, picture: Picture, text: str):
        """The middle of the text, or None where it is not on the screen."""
        grey = picture.grey()
        for binary in _BINARIES:
            pixels = grey.translate(binary)
            for shape in self.shapes(text):
                place = shape.find(pixels, picture.width)
                if place:
                    return place[0] + shape.width // 2, place[1] + len(shape.rows) // 2
        return None

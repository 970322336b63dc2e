"""Pictures of the screen, as QEMU dumps them."""

from pathlib import Path


class Picture:
    """`pixels` are red, green and blue bytes, row by row."""

    def __init__(self, width: int, height: int, pixels: bytes):
        self.width, self.height, self.pixels = width, height, pixels

    @staticmethod
    def read(file: Path) -> "Picture":
        data = file.read_bytes()
        kind, width, height, _, pixels = _fields(data)
        assert kind == b"P6", f"{file} is no colour picture"
        return Picture(int(width), int(height), pixels)

    def grey(self) -> bytes:
        """One byte a pixel; green alone, the eye's own choice."""
        return self.pixels[1::3]


def _fields(data: bytes):
    kind, width, height, most, pixels = data.split(None, 4)
    # split() eats white space that belongs to the first pixels: count from the end.
    return kind, width, height, most, data[len(data) - int(width) * int(height) * 3:]

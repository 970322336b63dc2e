"""Reads a crash dump package with Python's own zlib and a tar reader of a few lines, which
share nothing with what wrote it. The tarfile module would pass an archive without end blocks."""

import zlib

BLOCK = 512


class NotWhole(Exception):
    """The first thing wrong with a package."""


def entries_of(data):
    """The entries [(name, bytes)] of a package that is whole to the last byte."""
    return list(_entries(_unpacked(data)))


def _unpacked(data):
    stream = zlib.decompressobj(wbits=16 + zlib.MAX_WBITS)
    try:
        tar = stream.decompress(data)
    except zlib.error as error:
        raise NotWhole(f"gzip: {error}") from error
    if not stream.eof:
        raise NotWhole("the gzip member has no end")
    if stream.unused_data:
        raise NotWhole("something follows the gzip member")
    return tar


def _number(field):
    text = field.split(b"\0")[0].strip()
    try:
        return int(text, 8)
    except ValueError as error:
        raise NotWhole(f"no number in a header: {field!r}") from error


def _entries(tar):
    at = 0
    while tar[at:at + BLOCK].strip(b"\0"):
        header = tar[at:at + BLOCK]
        counted = header[:148] + b" " * 8 + header[156:]
        if len(header) < BLOCK or _number(header[148:156]) != sum(counted):
            raise NotWhole(f"damaged header at {at}")
        size = _number(header[124:136])
        at += BLOCK
        data = tar[at:at + size]
        if len(data) != size:
            raise NotWhole("an entry is cut short")
        at += -(-size // BLOCK) * BLOCK
        yield header[:100].split(b"\0")[0].decode(), data
    if tar[at:] != bytes(2 * BLOCK):
        raise NotWhole("the end blocks are missing, or something follows them")

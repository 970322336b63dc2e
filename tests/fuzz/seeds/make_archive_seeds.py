#!/usr/bin/env python3
"""Writes the seeds of fuzz_archive_bytes and fuzz_archive_entries.

Their layouts stand in tests/fuzz/fuzz_archive_bytes.cpp and archive_recipe.h.
SevenZip comes from the program 7zz.
"""
import gzip
import io
import subprocess
import tarfile
import tempfile
import zipfile
import zlib
from pathlib import Path

from seed_folder import write_seeds

GZIP, TAR, ZIP, SEVEN_ZIP, THROUGH_FUNCTION, MEND = 0, 1, 2, 3, 4, 8
MODE, SIZE, TYPE = 100, 124, 156
FILE, FOLDER, LINK, PIPE, HARD_LINK = 0, 3, 5, 6, 7
LETTERS = {"a": 0, "b": 1, ".": 2, "/": 3, " ": 4, "A": 5}


def tar(*members, form=tarfile.GNU_FORMAT):
    """Members are (name, data) or (name, type) or (name, type, target). Without the padding at its end."""
    buffer = io.BytesIO()
    with tarfile.open(fileobj=buffer, mode="w", format=form) as archive:
        for name, content, *target in members:
            info = tarfile.TarInfo(name)
            if content in (tarfile.DIRTYPE, tarfile.SYMTYPE, tarfile.LNKTYPE, tarfile.FIFOTYPE, tarfile.CHRTYPE):
                info.type, info.linkname = content, "".join(target)
                archive.addfile(info)
            else:
                info.size = len(content)
                archive.addfile(info, io.BytesIO(content))
        length = archive.offset
    return buffer.getvalue()[: length + 1024]


def sparse(size, offset):
    """An old GNU sparse file that claims `size` bytes, of which "data" is at `offset`."""
    header = bytearray(tar(("gap", b"data"))[:512])
    header[156:157] = b"S"
    header[124:136] = b"%011o\0" % 4
    header[386:398] = b"%011o\0" % offset
    header[398:410] = b"%011o\0" % 4
    header[483:495] = b"%011o\0" % size
    header[148:156] = b" " * 8
    header[148:156] = b"%06o\0 " % sum(header)
    return bytes(header) + b"data".ljust(512, b"\0") + bytes(1024)


def with_field(tar, place, content):
    """The first header holds `content` at `place`, and no longer the sum of its bytes."""
    return tar[:place] + content + tar[place + len(content):]


def packed(data):
    return gzip.compress(data, mtime=0)


def zipped(*members, method=zipfile.ZIP_DEFLATED, mode=None):
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w", method) as archive:
        for name, data in members:
            info = zipfile.ZipInfo(name)
            info.compress_type = method
            info.external_attr = (mode or 0o100644) << 16
            archive.writestr(info, data)
    return buffer.getvalue()


def seven_zipped(*options):
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "a").mkdir()
        (Path(folder) / "a" / "file").write_bytes(b"data" * 8)
        subprocess.run(["7zz", "a", "-bd", *options, "x.7z", "a"], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        return (Path(folder) / "x.7z").read_bytes()


def archive(form, data):
    return bytes([form]) + data


def entry(kind, name, data=b"", permissions=0o44):
    letters = bytes(LETTERS[letter] for letter in name)
    return bytes([kind, permissions, len(letters)]) + letters + bytes([len(data)]) + data


TREE = tar(("a", tarfile.DIRTYPE), ("a/b", b"data"), ("c", b""))
HOSTILE = tar(("../x", b"data"), ("/x", b"data"))
ZIP_TREE = zipped(("a/", b""), ("a/b", b"data" * 9))
BYTES = {
    "gzip_tree": archive(GZIP, packed(TREE)),
    "gzip_tree_through_function": archive(GZIP | THROUGH_FUNCTION, packed(TREE)),
    "gzip_cut": archive(GZIP, packed(TREE)[:-12]),
    "gzip_trailer_wrong": archive(GZIP, packed(TREE)[:-8] + bytes(8)),
    "gzip_two_streams": archive(GZIP, packed(TREE[:512]) + packed(TREE[512:])),
    "gzip_in_gzip": archive(GZIP, packed(packed(TREE))),
    "gzip_of_a_mebibyte_of_zeros": archive(GZIP, packed(tar(("bomb", bytes(1 << 20))))[:1100]),
    "gzip_of_nothing": archive(GZIP, packed(b"")),
    "tar_tree": archive(TAR, TREE),
    "tar_tree_through_function": archive(TAR | THROUGH_FUNCTION, TREE),
    "tar_leaves_the_folder": archive(TAR, HOSTILE),
    "tar_link_then_file_below_it": archive(TAR, tar(("l", tarfile.SYMTYPE, "/tmp"), ("l/x", b"data"))),
    "tar_hard_link": archive(TAR, tar(("l", tarfile.LNKTYPE, "/etc/passwd"))),
    "tar_pipe_and_device": archive(TAR, tar(("p", tarfile.FIFOTYPE), ("d", tarfile.CHRTYPE))),
    "tar_long_name": archive(TAR, tar(("n" * 200, b"data"))),
    "tar_pax_name": archive(TAR, tar(("ü" * 60, b"data"), form=tarfile.PAX_FORMAT)),
    "tar_sparse": archive(TAR, sparse(8192, 4096)),
    "tar_sparse_of_a_tebibyte": archive(TAR, sparse(1 << 32, 0)),
    "tar_name_longer_than_any_file_system_takes": archive(TAR, tar(("n" * 300, b"data"))),
    "tar_mended_tree": archive(TAR | MEND, TREE),
    "tar_mended_pax_name": archive(TAR | MEND, tar(("ü" * 60, b"data"), form=tarfile.PAX_FORMAT)),
    "tar_mended_sparse": archive(TAR | MEND, sparse(8192, 4096)),
    "tar_size_largest": archive(TAR | MEND, with_field(tar(("a", b"data")), SIZE, b"7" * 12)),
    "tar_size_binary": archive(TAR | MEND, with_field(tar(("a", b"data")), SIZE, b"\x80" + bytes(10) + b"\4")),
    "tar_size_negative": archive(TAR | MEND, with_field(tar(("a", b"data")), SIZE, b"\xff" * 12)),
    "tar_size_no_number": archive(TAR | MEND, with_field(tar(("a", b"data")), SIZE, b"12x45678 9ab")),
    "tar_mode_largest": archive(TAR | MEND, with_field(tar(("a", b"data")), MODE, b"7" * 8)),
    "tar_volume_header": archive(TAR | MEND, with_field(tar(("a", b"data")), TYPE, b"V")),
    "tar_type_unknown": archive(TAR | MEND, with_field(tar(("a", b"data")), TYPE, b"Q")),
    "tar_cut_in_data": archive(TAR, tar(("a", b"data"))[:514]),
    "tar_without_end": archive(TAR, tar(("a", b"data"))[:1024]),
    "tar_empty": archive(TAR, b""),
    "zip_tree": archive(ZIP, ZIP_TREE),
    "zip_tree_through_function": archive(ZIP | THROUGH_FUNCTION, ZIP_TREE),
    "zip_stored": archive(ZIP, zipped(("a", b"data"), method=zipfile.ZIP_STORED)),
    "zip_bzip2": archive(ZIP, zipped(("a", b"data" * 9), method=zipfile.ZIP_BZIP2)),
    "zip_lzma": archive(ZIP, zipped(("a", b"data" * 9), method=zipfile.ZIP_LZMA)),
    "zip_leaves_the_folder": archive(ZIP, zipped(("../x", b"data"))),
    "zip_link": archive(ZIP, zipped(("l", b"/etc/passwd"), mode=0o120777)),
    "zip_set_user_id": archive(ZIP, zipped(("s", b"data"), mode=0o106755)),
    "zip_without_directory": archive(ZIP, ZIP_TREE[:90]),
    "zip_directory_alone": archive(ZIP, ZIP_TREE[90:]),
    "seven_zip_lzma": archive(SEVEN_ZIP, seven_zipped("-m0=lzma")),
    "seven_zip_lzma2": archive(SEVEN_ZIP, seven_zipped("-m0=lzma2")),
    "seven_zip_ppmd": archive(SEVEN_ZIP, seven_zipped("-m0=ppmd")),
    "seven_zip_bzip2": archive(SEVEN_ZIP, seven_zipped("-m0=bzip2")),
    "seven_zip_stored": archive(SEVEN_ZIP, seven_zipped("-m0=copy", "-mhc=off")),
    "seven_zip_cut": archive(SEVEN_ZIP, seven_zipped("-m0=copy")[:64]),
}

ENTRIES = {"hard_link_and_file": bytes([TAR]) + entry(HARD_LINK, "a", b"/etc/passwd") + entry(FILE, "a", b"data")}
for form, format_name in ((GZIP, "gzip"), (TAR, "tar"), (ZIP, "zip"), (SEVEN_ZIP, "seven_zip")):
    for name, entries in {
        "tree": entry(FOLDER, "a") + entry(FILE, "a/b", b"data"),
        "file_in_no_folder": entry(FILE, "a/b/a/b", b"data"),
        "climbs": entry(FILE, "a", b"data") + entry(FILE, "../b", b"data") + entry(FILE, "b", b"data"),
        "climbs_within": entry(FILE, "a/b/../../b/./a", b"data"),
        "climbs_from_within": entry(FILE, "a/../../b", b"data"),
        "absolute": entry(FILE, "/a", b"data"),
        "folder_itself": entry(FOLDER, ".") + entry(FOLDER, "a/..") + entry(FILE, "a/..", b"data"),
        "file_below_file": entry(FILE, "a", b"data") + entry(FILE, "a/b", b"data"),
        "file_over_folder": entry(FOLDER, "a") + entry(FILE, "a", b"data"),
        "folder_over_file": entry(FILE, "a", b"data") + entry(FOLDER, "a"),
        "file_twice": entry(FILE, "a", b"first") + entry(FILE, "a", b"2"),
        "permissions": entry(FILE, "a", b"", 0xFF) + entry(FILE, "b", b"data", 0o11),
        "link_then_file_below_it": entry(LINK, "a", b"/tmp") + entry(FILE, "a/b", b"data"),
        "pipe_then_file": entry(PIPE, "a") + entry(FILE, "a", b"data"),
        "blanks": entry(FILE, " /. ", b"data") + entry(FOLDER, " "),
    }.items():
        ENTRIES[f"{format_name}_{name}"] = bytes([form]) + entries

write_seeds("archive_bytes", BYTES, 4096)
write_seeds("archive_entries", ENTRIES)

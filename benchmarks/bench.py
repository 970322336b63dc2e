#!/usr/bin/env python3
"""Compares the shipped program with its peers, run by turns; see docs/benchmarks.md.

Started by scripts/bench, which builds everything first. Figures are for reading:
only a run that went wrong makes this fail.
"""
import argparse
import functools
import hashlib
import io
import os
import pathlib
import platform
import re
import statistics
import tarfile
import time
import zlib

import core_image
import runs

MEBIBYTE = core_image.MEBIBYTE


def by_turns(candidates, rounds):
    """Runs the named candidates A B C, C B A, A B C ...: what drifts, drifts for all.

    One round more is run first and forgotten: it fills the caches.
    """
    samples = {name: [] for name in candidates}
    for number in range(rounds + 1):
        names = list(candidates) if number % 2 else list(reversed(candidates))
        for name in names:
            usage = candidates[name]().finish()
            if number > 0:
                samples[name].append(usage)
    return samples


def values(samples, field):
    return [getattr(usage, field) for usage in samples]


def summary(figures, digits=3):
    return f"{statistics.median(figures):9.{digits}f}  ({min(figures):.{digits}f} to {max(figures):.{digits}f})"


class Table:
    """Lines for the screen and for the file of results."""

    def __init__(self):
        self.lines = []

    def add(self, line=""):
        print(line, flush=True)
        self.lines.append(line)

    def head(self, title):
        self.add()
        self.add(title)

    def row(self, name, text):
        self.add(f"  {name:<50}{text}")

    def figures(self, name, figures, digits=3):
        self.row(name, summary(figures, digits))

    def ratio(self, name, ours, theirs):
        """The median of the ratios of each round, not the ratio of the medians."""
        self.row(name, summary([a / b for a, b in zip(ours, theirs)], 3))


def first_package(dump, log):
    """Packs once, for the report document inside and to see that the dump survives."""
    run = runs.reporter(dump, log)
    run.finish()
    package = run.place / "user_data" / "crash_dumps" / "Crash Report 0.cdp"
    report = runs.PLACE / "report.xml"
    with tarfile.open(package) as archive:
        report.write_bytes(archive.extractfile("report.xml").read())
        packed = hashlib.file_digest(archive.extractfile(dump.name), "sha256").digest()
    with open(dump, "rb") as file:
        if hashlib.file_digest(file, "sha256").digest() != packed:
            raise RuntimeError("the dump in the package is not the dump")
    return runs.Files(dump, report, log)


def side_by_side(start_ours, start_theirs, rounds):
    """Runs both at the same time, each on a core of its own, and swaps the cores each round.

    The machine's speed drifts by more than the two differ: this way it drifts for both.
    """
    cores = sorted(os.sched_getaffinity(0))[:2]
    ours, theirs = [], []
    for number in range(rounds):
        one, other = cores if number % 2 else reversed(cores)
        running = start_ours(slot=0, core=one), start_theirs(slot=1, core=other)
        ours.append(running[0].finish())
        theirs.append(running[1].finish())
    return ours, theirs


def swapped_ratios(ours, theirs):
    """One ratio for each pair of rounds between which the cores were swapped."""
    ratios = [a / b for a, b in zip(ours, theirs)]
    return [(first * second) ** 0.5 for first, second in zip(ratios[::2], ratios[1::2])]


PACKAGING_PEERS = {
    "bsdtar": functools.partial(runs.bsdtar, synced=False),
    "bsdtar, synced": functools.partial(runs.bsdtar, synced=True),
    "GNU tar and gzip": functools.partial(runs.tar_and, "gzip"),
    "GNU tar and pigz -p 1": functools.partial(runs.tar_and, "pigz -p 1"),
}


def packaging(table, files, rounds):
    size = files.dump.stat().st_size // MEBIBYTE
    for peer, start in PACKAGING_PEERS.items():
        ours, theirs = side_by_side(
            lambda **where: runs.reporter(files.dump, files.log, **where),
            lambda **where: start(files=files, **where),
            2 * rounds,
        )
        table.head(f"Packaging a core image of {size} MiB beside {peer}: {2 * rounds} rounds")
        for field, unit in (("wall", "wall seconds"), ("cpu", "CPU seconds")):
            table.figures(f"reporter, {unit}", values(ours, field))
            table.figures(f"{peer}, {unit}", values(theirs, field))
            table.row(
                f"reporter / {peer}, {unit}",
                summary(swapped_ratios(values(ours, field), values(theirs, field))),
            )
        table.row("bytes of the packages", f"{ours[0].output:9d}  {theirs[0].output}")


def deflate_alone(files):
    """CPU seconds zlib takes for the package's bytes out of memory, and what comes out."""
    tar = io.BytesIO()
    with tarfile.open(fileobj=tar, mode="w", format=tarfile.GNU_FORMAT) as archive:
        for file in (files.dump, files.report, files.log):
            archive.add(file, file.name)
    began = time.process_time()
    packer = zlib.compressobj(level=6, wbits=31)
    packed = b"".join([*map(packer.compress, pieces(tar.getbuffer())), packer.flush()])
    return time.process_time() - began, packed


def pieces(data, size=8192):
    return (data[start:start + size] for start in range(0, len(data), size))


def write_alone(data):
    """Seconds that the medium takes for so many bytes."""
    path = runs.PLACE / "written"
    os.sync()
    began = time.monotonic()
    with open(path, "wb") as file:
        file.write(data)
        os.fsync(file.fileno())
    seconds = time.monotonic() - began
    path.unlink()
    return seconds


def limits(table, files, rounds):
    """What no way of packaging on one core can go below, by turns with the program."""
    ours, deflating, writing = [], [], []
    for _ in range(rounds):
        ours.append(runs.reporter(files.dump, files.log).finish())
        seconds, packed = deflate_alone(files)
        deflating.append(seconds)
        writing.append(write_alone(packed))
    table.head(f"Limits: the same package, {rounds} rounds")
    table.figures("zlib alone at the same level, CPU seconds", deflating)
    table.figures("writing and syncing as many bytes, seconds", writing)
    table.ratio("reporter / zlib alone, CPU seconds", values(ours, "cpu"), deflating)
    table.ratio("reporter / zlib alone, wall seconds", values(ours, "wall"), deflating)


def memory(table, images, log, missing, rounds):
    candidates = {"nothing to pack": lambda: runs.reporter(missing, log)}
    for name, dump in images.items():
        candidates[f"dump of {name}"] = lambda dump=dump: runs.reporter(dump, log)
    samples = by_turns(candidates, rounds)
    table.head(f"Memory: peak resident size in MiB, {rounds} rounds")
    idle = values(samples["nothing to pack"], "peak")
    for name, usages in samples.items():
        table.figures(name, values(usages, "peak"), 1)
    for name in list(samples)[1:]:
        above = [a - b for a, b in zip(values(samples[name], "peak"), idle)]
        table.figures(f"{name}, above nothing to pack", above, 1)


def start_up(table, files, missing, rounds):
    samples = by_turns(
        {
            "bare window, to painted": runs.bare_window,
            "reporter, nothing to pack, to reboot": lambda: runs.reporter(missing, files.log),
            "reporter, dump of 1 MiB, to reboot": lambda: runs.reporter(files.dump, files.log),
            "bsdtar of the same files, synced": lambda: runs.bsdtar(files, synced=True),
        },
        rounds,
    )
    walls = {name: [1000 * wall for wall in values(usages, "wall")] for name, usages in samples.items()}
    bare, nothing, one, peer = walls.values()
    table.head(f"From exec to the end: wall milliseconds, {rounds} rounds")
    for name, figures in walls.items():
        table.figures(name, figures, 1)
    table.figures("packaging itself: dump of 1 MiB less nothing", [a - b for a, b in zip(one, nothing)], 1)
    table.ratio("reporter, nothing to pack / bare window", nothing, bare)
    allowed = [1.3 * window + tar for window, tar in zip(bare, peer)]
    table.ratio("reporter, 1 MiB / (1.3 bare windows and bsdtar)", one, allowed)


def crash_screen(table, rounds):
    samples = by_turns({"bare dialog": runs.bare_dialog, "crash screen": runs.crash_screen}, rounds)
    bare, ours = samples["bare dialog"], samples["crash screen"]
    table.head(f"From exec to the first painted screen, {rounds} rounds")
    for name, usages in samples.items():
        table.figures(f"{name}, wall milliseconds", [1000 * usage.wall for usage in usages], 1)
    table.ratio("crash screen / bare dialog, wall", values(ours, "wall"), values(bare, "wall"))
    counts = [start(counting=True).finish().instructions for start in (runs.crash_screen, runs.bare_dialog)]
    table.row("crash screen / bare dialog, instructions", f"{counts[0] / counts[1]:9.3f}  ({counts[0]} / {counts[1]})")
    above = [a - b for a, b in zip(values(ours, "resident"), values(bare, "resident"))]
    table.figures("crash screen above bare dialog, resident MiB", above, 1)


def wake_ups(seconds_left, duration):
    """How often the program's main thread slept in `duration` seconds with its screen up."""
    run = runs.crash_screen(seconds=seconds_left, stay=True)
    try:
        run.wait_for_record()
        time.sleep(2)  # what follows the first painting
        pid = next(p for p in pathlib.Path("/proc").glob("[0-9]*") if comm_of(p) == "crash_reporter")
        before = switches_of(pid)
        time.sleep(duration)
        return switches_of(pid) - before
    finally:
        run.end()


def comm_of(process):
    try:
        return (process / "comm").read_text().strip()
    except OSError:
        return ""


def switches_of(process):
    status = (process / "status").read_text()
    return int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status, re.M).group(1))


def idle(table):
    table.head("Idle: times the program woke up in 20 seconds")
    table.row("no countdown", f"{wake_ups(-1, 20):9d}")
    table.row("countdown of 600 seconds", f"{wake_ups(600, 20):9d}")


def toolkit(table, rounds):
    """Our style beside Fusion on every page of the gallery, and icons from the cache."""
    samples = {}
    for _ in range(rounds):
        for line in runs.toolkit_bench().splitlines():
            name, ours, theirs = line.split()
            samples.setdefault(name, []).append((float(ours), float(theirs)))
    table.head(f"Toolkit: painting every page of the gallery, our style / Fusion, {rounds} rounds")
    pages = {name[len("page:"):]: pairs for name, pairs in samples.items() if name.startswith("page:")}
    for name, pairs in pages.items():
        table.figures(f"{name}, ratio", [ours / theirs for ours, theirs in pairs])
    totals = [tuple(map(sum, zip(*pairs))) for pairs in zip(*pages.values())]
    table.figures("all pages, milliseconds in our style", [ours for ours, _ in totals])
    table.figures("all pages, ratio", [ours / theirs for ours, theirs in totals])
    rendered_by_cached = [rendered / cached for rendered, cached in samples["icon"]]
    table.figures("an icon rendered / from the cache", rendered_by_cached, 1)


def file_dialog(table, rounds):
    """The file panel beside QFileDialog, both in our style, on a folder of 5,000 files."""
    folder = runs.PLACE / "files"
    folder.mkdir(exist_ok=True)
    for number in range(5000):
        (folder / f"Crash Report {number}.cdp").touch()
    pairs = []
    for number in range(rounds + 1):
        names = ("panel", "peer") if number % 2 else ("peer", "panel")
        times = {name: runs.file_dialog(name, folder) for name in names}
        if number > 0:
            pairs.append((times["panel"], times["peer"]))
    table.head(f"The file dialog on a folder of 5,000 files, {rounds} rounds")
    for index, painted in enumerate(("first files painted", "all files painted")):
        ours, theirs = [panel[index] for panel, _ in pairs], [peer[index] for _, peer in pairs]
        table.figures(f"{painted}, milliseconds", ours, 1)
        table.figures(f"QFileDialog, {painted}, milliseconds", theirs, 1)
        table.ratio(f"{painted}, ours / QFileDialog", ours, theirs)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rounds", type=int, default=6, help="pairs of rounds of the long comparison (6)")
    arguments = parser.parse_args()
    rounds = arguments.rounds

    runs.PLACE.mkdir(parents=True, exist_ok=True)
    images = {name: runs.PLACE / f"{name.replace(' ', '')}.core" for name in ("1 MiB", "256 MiB", "1024 MiB")}
    for name, path in images.items():
        core_image.write_core_image(path, int(name.split()[0]) * MEBIBYTE)
    log = runs.PLACE / "r4.log"
    log.write_text("".join(f"2026-11-21 14:30:05.{n % 1000:03} axis {n % 6} ready\n" for n in range(4000)))
    missing = runs.PLACE / "missing.core"

    table = Table()
    table.add(f"{os.cpu_count()} cores, load {os.getloadavg()[0]:.1f} at the start, Linux {platform.release()}")
    table.add("median (least to most); a ratio is the median of the rounds' ratios")
    large = first_package(images["256 MiB"], log)
    packaging(table, large, rounds)
    limits(table, large, rounds)
    memory(table, {name: images[name] for name in ("1 MiB", "1024 MiB")}, log, missing, 2)
    start_up(table, first_package(images["1 MiB"], log), missing, 4 * rounds)
    crash_screen(table, 2 * rounds)
    file_dialog(table, 2 * rounds)
    idle(table)
    toolkit(table, rounds)
    table.head(f"Load {os.getloadavg()[0]:.1f} at the end")
    (runs.PLACE / "results.txt").write_text("\n".join(table.lines) + "\n")
    for path in images.values():
        path.unlink()


if __name__ == "__main__":
    main()

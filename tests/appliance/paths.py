"""Where the appliance's files are: all that is made lies in the build tree."""

from pathlib import Path

SOURCE = Path(__file__).resolve().parent
PROJECT = SOURCE.parent.parent
SCENARIOS = SOURCE / "scenarios"
BUILD = PROJECT / "build" / "appliance"
PACKAGES = BUILD / "packages"
UNPACKED = BUILD / "unpacked"
ROOT = BUILD / "root"
KERNEL = BUILD / "vmlinuz"
INITRAMFS = BUILD / "initramfs.cpio"
IMAGE_STAMP = BUILD / "image.stamp"
STATE = BUILD / "state"
RUNS = BUILD / "runs"
DEMO = BUILD / "demo"

"""Makes the appliance's kernel and initramfs from Debian packages and the built program.

The packages are downloaded and unpacked in the build tree, never installed. The root file
system holds the program where its package installs it, the libraries it asks the loader
for, one Qt platform plugin, one font family, busybox and the kernel modules below.
"""

import hashlib
import os
import re
import shutil
import subprocess
from pathlib import Path

import paths

# What the emulated machine needs; modules.dep adds what these depend on. exfat and ext4 are
# there so that a key of that kind is refused by the program, not for want of a driver.
MODULES = """
virtio_pci virtio_blk virtio_rng ext4 crc32c_generic
xhci_pci usbhid hid_generic evdev usb_storage uas sd_mod
vfat nls_cp437 nls_ascii nls_iso8859-1 nls_utf8 exfat
bochs i6300esb
""".split()

# Opened by name at run time, so the loader's list does not show them.
PLUGINS = ["platforms/libqlinuxfb.so", "platforms/libqoffscreen.so"]
QT_PLUGINS = Path("/usr/lib/x86_64-linux-gnu/qt5/plugins")
FONTS = Path("/usr/share/fonts/truetype/dejavu")
FONT_FILES = ["DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSansMono.ttf"]
FONT_CONFIGURATION = paths.PROJECT / "software/applications/crash_reporter/fonts.conf"
DUMP_BYTES = 3 << 20
GUEST = paths.SOURCE / "guest"
EMPTY_FOLDERS = ["dev", "proc", "sys", "tmp", "run", "root", "srv", "user_data", "usbkey", "var/cache"]


def run(*command, **options) -> str:
    return subprocess.run([str(word) for word in command], check=True, text=True,
                          stdout=subprocess.PIPE, **options).stdout


def kernel_package() -> str:
    for line in run("apt-cache", "depends", "linux-image-amd64").splitlines():
        found = re.search(r"Depends: (linux-image-\S+)", line)
        if found:
            return found.group(1)
    raise SystemExit("appliance: no kernel package: run apt-get update")


def fetch_packages() -> None:
    if (paths.UNPACKED / "complete").exists():
        return
    for folder in (paths.PACKAGES, paths.UNPACKED):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    print("appliance: downloading the kernel and busybox", flush=True)
    run("apt-get", "download", "-q", kernel_package(), "busybox-static", cwd=paths.PACKAGES,
        stderr=subprocess.DEVNULL)
    for package in paths.PACKAGES.glob("*.deb"):
        run("dpkg-deb", "-x", package, paths.UNPACKED)
    (paths.UNPACKED / "complete").touch()


def module_files() -> list[Path]:
    """The modules and what they depend on, in an order in which they can be loaded."""
    tree = next((paths.UNPACKED / "lib/modules").iterdir())
    names = [line.strip() for line in (tree / "modules.order").read_text().splitlines()]
    by_name = {Path(name).stem.replace("-", "_"): name for name in names}
    built_in = {Path(line).stem.replace("-", "_")
                for line in (tree / "modules.builtin").read_text().splitlines()}
    ordered: list[Path] = []

    def add(name: str) -> None:
        if name in built_in:
            return
        file = tree / by_name[name]
        if file in ordered:
            return
        for needed in run("modinfo", "-F", "depends", file).strip().split(","):
            if needed:
                add(needed.replace("-", "_"))
        ordered.append(file)

    for module in MODULES:
        add(module.replace("-", "_"))
    return ordered


def libraries_of(*programs: Path) -> set[Path]:
    found = set()
    for program in programs:
        for line in run("ldd", program).splitlines():
            path = re.search(r"(/\S+) \(0x", line)
            if path:
                found.add(Path(path.group(1)))
    return found


def place(source: Path, target: str) -> Path:
    file = paths.ROOT / target.lstrip("/")
    file.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(source, file)
    return file


def place_program(bin_folder: Path) -> None:
    programs = [bin_folder / name for name in ("crash_reporter", "crash_scenario")]
    plugins = [QT_PLUGINS / name for name in PLUGINS]
    for program in programs:
        run("strip", place(program, f"usr/bin/{program.name}"))
    for file in plugins:
        place(file, str(file))
    for library in libraries_of(*programs, *plugins):
        place(library, str(library))
    place(FONT_CONFIGURATION, "usr/share/r4_crash_reporter/fonts.conf")


def place_fonts() -> None:
    for name in FONT_FILES:
        place(FONTS / name, str(FONTS / name))
    # Made beforehand, as an image's build would: else every start reads all fonts.
    cache = paths.ROOT / "var/cache/fontconfig"
    cache.mkdir(parents=True)
    settings = dict(os.environ, FONTCONFIG_FILE="/usr/share/r4_crash_reporter/fonts.conf")
    run("fc-cache", "-y", paths.ROOT, "-s", env=settings)


def dump() -> bytes:
    """What play_crash gives out as the crashed application's memory: cannot be compressed."""
    blocks = DUMP_BYTES // 32
    return b"".join(hashlib.sha256(b"R4 %d" % n).digest() for n in range(blocks))


def place_system() -> None:
    (paths.ROOT / "srv/r4_main.core").write_bytes(dump())
    place(paths.UNPACKED / "bin/busybox", "bin/busybox")
    for file in GUEST.iterdir():
        target = "init" if file.name == "init" else f"usr/bin/{file.name}"
        place(file, target).chmod(0o755)
    modules = module_files()
    for file in modules:
        place(file, f"lib/modules/{file.name}")
    (paths.ROOT / "lib/modules/order").write_text(
        "".join(f"{file.name}\n" for file in modules))


def pack() -> None:
    names = run("find", ".", "-print0", cwd=paths.ROOT)
    with open(paths.INITRAMFS, "wb") as file:
        subprocess.run(["cpio", "--null", "--create", "--format=newc", "--quiet", "--owner=0:0"],
                       input=names.encode(), stdout=file, cwd=paths.ROOT, check=True)


def inputs_digest(bin_folder: Path) -> str:
    digest = hashlib.sha256()
    files = [bin_folder / "crash_reporter", bin_folder / "crash_scenario", FONT_CONFIGURATION,
             Path(__file__), *sorted(GUEST.iterdir())]
    for file in files:
        digest.update(file.read_bytes())
    return digest.hexdigest()


def make(bin_folder: Path) -> bool:
    """Makes the image unless it is the one of these inputs; true when it made one."""
    fetch_packages()
    digest = inputs_digest(bin_folder)
    if paths.IMAGE_STAMP.exists() and paths.IMAGE_STAMP.read_text() == digest:
        return False
    print("appliance: making the image", flush=True)
    shutil.rmtree(paths.ROOT, ignore_errors=True)
    for folder in EMPTY_FOLDERS:
        (paths.ROOT / folder).mkdir(parents=True)
    place_program(bin_folder)
    place_system()
    place_fonts()
    pack()
    shutil.copy(next((paths.UNPACKED / "boot").glob("vmlinuz-*")), paths.KERNEL)
    paths.IMAGE_STAMP.write_text(digest)
    return True

"""One emulated appliance: QEMU's process, its devices, and what a person does to it."""

import re
import shlex
import signal
import socket
import subprocess
import time
from pathlib import Path

import paths
from qmp import Qmp
from screen import Picture

WIDTH, HEIGHT = 1024, 768
# Where the pointer hides nothing that is looked for.
PARKED = (WIDTH - 1, 0)
MEMORY_MEGABYTES = 512
INTERNAL_DISK_BYTES = 64 << 20
KERNEL_WORDS = ["console=ttyS0", "quiet", "mitigations=off", "nokaslr", "random.trust_cpu=on"]
# The machine's time by its instructions, 2^shift nanoseconds each.
CLOCKS = {"a clock that skips what is idle": "shift=3,sleep=off",
          "the clock of a slow processor": "shift=6,sleep=on"}


def devices() -> list[str]:
    """What the machine has from the start; a restored one must have just the same."""
    return ["-nodefaults", "-no-user-config", "-M", "q35", "-accel", "tcg",
            "-cpu", "qemu64,+rdrand,+ssse3", "-m", str(MEMORY_MEGABYTES), "-smp", "1",
            "-display", "none", "-vga", "none",
            "-rtc", "base=2026-11-21T14:30:00,clock=vm",
            "-device", f"bochs-display,xres={WIDTH},yres={HEIGHT}",
            "-device", "qemu-xhci,id=xhci",
            "-device", "usb-kbd,bus=xhci.0,port=1",
            "-device", "usb-tablet,bus=xhci.0,port=2",
            "-device", "i6300esb",
            "-device", "virtio-rng-pci",
            "-device", "virtio-blk-pci,drive=internal"]


def image_arguments(internal_disk: Path, extra_words: list[str] = ()) -> list[str]:
    return ["-kernel", str(paths.KERNEL), "-initrd", str(paths.INITRAMFS),
            "-append", " ".join(KERNEL_WORDS + list(extra_words)),
            "-blockdev", f"qcow2,node-name=internal,file.driver=file,"
            f"file.filename={internal_disk}"]


class Machine:
    """`folder` takes its sockets, its serial log and the picture of its screen."""

    def __init__(self, folder: Path, internal_disk: Path, restore: Path | None = None,
                 clock: str = "", keys: list[list[str]] = ()):
        self.folder = folder
        self.console = folder / "console.log"
        for name in ("qmp", "shell"):
            (folder / name).unlink(missing_ok=True)
        self.answer = 0
        command = ["qemu-system-x86_64", *devices(), "-no-reboot",
                   *image_arguments(internal_disk),
                   "-serial", f"file:{self.console}",
                   "-chardev", f"socket,id=shell,path={folder}/shell,server=on,wait=off",
                   "-serial", "chardev:shell",
                   "-qmp", f"unix:{folder}/qmp,server=on,wait=off"]
        if clock:
            command += ["-icount", CLOCKS[clock]]
        if restore:
            command += ["-incoming", f"exec:cat {shlex.quote(str(restore))}"]
        for key in keys:
            command += key
        self.error_log = open(folder / "qemu.log", "wb")
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL,
                                        stdout=self.error_log, stderr=self.error_log)
        self.qmp = Qmp(self._connect("qmp"))
        self.shell = self._connect("shell")
        self.shell_pending = b""

    def _connect(self, name: str) -> socket.socket:
        deadline = time.monotonic() + 30
        while True:
            connection = socket.socket(socket.AF_UNIX)
            try:
                connection.connect(f"{self.folder}/{name}")
                return connection
            except OSError:
                connection.close()
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise RuntimeError((self.folder / "qemu.log").read_text())
            time.sleep(0.02)

    # What comes over the serial lines

    def wait_for_console(self, text: str, seconds: float) -> None:
        deadline = time.monotonic() + seconds
        while text not in self.console.read_text(errors="replace"):
            if time.monotonic() > deadline or self.process.poll() is not None:
                raise TimeoutError(f"no {text!r} on the console")
            time.sleep(0.05)

    def machine_time(self, text: str) -> float:
        """When the kernel said so: seconds since its start, by its own clock."""
        said = self.console.read_text(errors="replace")
        found = re.search(rf"^\[ *(\d+\.\d+)\] {re.escape(text)}", said, re.MULTILINE)
        if not found:
            raise ValueError(f"the kernel did not say {text!r}")
        return float(found.group(1))

    def guest(self, command: str, seconds: float = 30) -> str:
        """Runs a shell command inside; its output. Not for judging: for setting a scene."""
        self.answer += 1
        mark = f"@@{self.answer}="
        self.shell.sendall(f"{command}\necho '@''@{self.answer}='$?\n".encode())
        deadline = time.monotonic() + seconds
        while mark.encode() not in self.shell_pending or not self.shell_pending.endswith(b"\n"):
            self.shell.settimeout(max(0.01, deadline - time.monotonic()))
            data = self.shell.recv(65536)
            if not data:
                raise ConnectionError("QEMU has ended")
            self.shell_pending += data
        text = self.shell_pending.decode(errors="replace").replace("\r\n", "\n")
        self.shell_pending = b""
        output, status = text.rsplit(mark, 1)
        if status.strip() != "0":
            raise RuntimeError(f"inside: {command!r} ended with {status.strip()}: {output}")
        return output

    # What an operator sees and does

    def screen(self) -> Picture:
        file = self.folder / "screen.ppm"
        self.qmp.command("screendump", filename=str(file))
        return Picture.read(file)

    def press(self, *keys: str) -> None:
        self.qmp.command("send-key", keys=[{"type": "qcode", "data": key} for key in keys])
        time.sleep(0.15)  # QEMU lets go of a key after 0.1 s; what is pressed before is lost

    def move_to(self, x: int, y: int) -> None:
        scale = 0x7FFF
        self._input({"type": "abs", "data": {"axis": "x", "value": x * scale // (WIDTH - 1)}},
                    {"type": "abs", "data": {"axis": "y", "value": y * scale // (HEIGHT - 1)}})

    def click(self, x: int, y: int) -> None:
        self.move_to(x, y)
        for down in (True, False):
            time.sleep(0.05)
            self._input({"type": "btn", "data": {"button": "left", "down": down}})
        time.sleep(0.05)
        self.move_to(*PARKED)

    def _input(self, *events: dict) -> None:
        self.qmp.command("input-send-event", events=list(events))

    # How it ends

    def wait_for_end(self, seconds: float) -> None:
        """Until the machine resets: with -no-reboot that ends QEMU."""
        self.process.wait(seconds)
        self.qmp.poll()

    def cut_power(self) -> None:
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def close(self) -> None:
        if self.process.poll() is None:
            self.cut_power()
        self.qmp.close()
        self.shell.close()
        self.error_log.close()

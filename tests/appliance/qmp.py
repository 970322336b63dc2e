"""QEMU's machine protocol: one command, one answer, and events in between."""

import json
import socket
import time


class QmpError(Exception):
    pass


class Qmp:
    """Events stay in `events` in the order they came; nothing is ever dropped."""

    def __init__(self, connection: socket.socket):
        self.events: list[dict] = []
        self.socket = connection
        self.pending = b""
        self._receive(time.monotonic() + 30)  # the greeting
        self.command("qmp_capabilities")

    def command(self, name: str, **arguments):
        message = {"execute": name}
        if arguments:
            message["arguments"] = {key.replace("_", "-"): value
                                    for key, value in arguments.items()}
        self.socket.sendall(json.dumps(message).encode() + b"\n")
        deadline = time.monotonic() + 60
        while True:
            answer = self._receive(deadline)
            if "error" in answer:
                raise QmpError(f"{name}: {answer['error']['desc']}")
            if "return" in answer:
                return answer["return"]

    def wait_for_event(self, name: str, seconds: float, since: int = 0) -> dict:
        """The first event of that name from position `since` on, come or to come."""
        deadline = time.monotonic() + seconds
        while True:
            for event in self.events[since:]:
                if event["event"] == name:
                    return event
            self._receive(deadline)

    def has_event(self, name: str) -> bool:
        return any(event["event"] == name for event in self.events)

    def poll(self) -> None:
        """Takes in what has come, without waiting."""
        try:
            while True:
                self._receive(time.monotonic() + 0.001)
        except (TimeoutError, ConnectionError):
            pass

    def _receive(self, deadline: float) -> dict:
        while b"\n" not in self.pending:
            remaining = deadline - time.monotonic()
            if remaining <= 0:
                raise TimeoutError("QEMU said nothing more")
            self.socket.settimeout(remaining)
            data = self.socket.recv(65536)
            if not data:
                raise ConnectionError("QEMU has ended")
            self.pending += data
        line, self.pending = self.pending.split(b"\n", 1)
        message = json.loads(line)
        if "event" in message:
            self.events.append(message)
        return message

    def close(self) -> None:
        self.socket.close()

"""Whatever the outside services do, they delay the work on a clip by less than 50 ms."""

import os
import socketserver
import threading
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from statistics import median

from clips import Clip, Footage, made
from common import WHOLE_START, Plan
from measure import output_of
from report import Row, at_most

SMALL = Footage("320x240", "320x240")
# A job on a small clip is short, so that 50 ms more would show; it takes many to see them.
RUNS_PER_ROUND = 8
KEYS = {"adEndpoint": "ads", "consentEndpoint": "consent", "analyticsEndpoint": "analytics",
        "remoteConfigEndpoint": "remote-config"}
PLACES = ("appOpenAdUnitID", "interstitialAdUnitID", "bannerAdUnitID")


@dataclass(frozen=True)
class Server:
    name: str
    answer: bytes | None  # after the question; None never answers
    repeats: int = 1


SERVERS = (
    Server("never answers", None),
    Server("refuses", b"HTTP/1.1 500 Internal Server Error\r\nConnection: close\r\n\r\n"),
    Server("answers at once", b"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n"
           b'{"text": "An ad", "link": "https://example.com", "required": false, "values": {}}'),
    Server("sends 64 MB", b"HTTP/1.1 200 OK\r\n\r\n" + bytes(1 << 20), repeats=64),
)


@dataclass(frozen=True)
class Taken:
    """In seconds."""

    job: float
    longest_gap: float


@contextmanager
def _running(server: Server) -> Iterator[int]:
    """Gives the port."""
    end = threading.Event()

    class Handler(socketserver.BaseRequestHandler):
        def handle(self) -> None:
            self.request.recv(65536)
            if server.answer is None:
                end.wait()
                return
            try:
                for _ in range(server.repeats):
                    self.request.sendall(server.answer)
            except OSError:
                pass  # The program had enough.

    with socketserver.ThreadingTCPServer(("127.0.0.1", 0), Handler) as listener:
        listener.daemon_threads = True
        threading.Thread(target=listener.serve_forever, daemon=True).start()
        try:
            yield listener.server_address[1]
        finally:
            end.set()
            listener.shutdown()


def _run(clip: Clip, home: Path) -> Taken:
    environment = [f"{name}={home / folder}" for name, folder in
                   (("XDG_CONFIG_HOME", "config"), ("XDG_STATE_HOME", "state"))]
    # Diagnostics of the services come before the line of numbers.
    numbers = output_of(["env", *environment, str(WHOLE_START), str(clip.path)]).splitlines()[-1].split()
    return Taken(float(numbers[0]), float(numbers[1]))


def _deploy(port: int | None, home: Path) -> None:
    folder = home / "config" / "anadrome"
    os.makedirs(folder, exist_ok=True)
    lines = [] if port is None else \
        [f"{key} = http://127.0.0.1:{port}/{path}" for key, path in KEYS.items()] + \
        [f"{key} = place" for key in PLACES]
    (folder / "deployment.conf").write_text("\n".join(lines) + "\n")


def _rows(name: str, clip: Clip, alone: list[Taken], beside: list[Taken]) -> list[Row]:
    on = f"{clip.name}, a server that {name}"
    later = 1000 * (median(run.job for run in beside) - median(run.job for run in alone))
    # The worst of all runs: a stop that comes seldom is one too.
    stood = 1000 * (max(run.longest_gap for run in beside) - max(run.longest_gap for run in alone))
    return [Row("delay of a job by the services", on, later, at_most(50), unit="ms"),
            Row("the main thread's longest stop, more than without", on, stood, at_most(50), unit="ms")]


def measure(plan: Plan, folder: Path) -> list[Row]:
    clip = made(SMALL, plan.seconds(10))
    alone: list[Taken] = []
    beside: dict[str, list[Taken]] = {server.name: [] for server in SERVERS}
    for run in range(plan.rounds * RUNS_PER_ROUND):
        _deploy(None, folder / "alone")
        alone.append(_run(clip, folder / "alone"))
        for number, server in enumerate(SERVERS):
            home = folder / f"{number}-{run}"
            with _running(server) as port:
                _deploy(port, home)
                beside[server.name].append(_run(clip, home))
    return [row for name, taken in beside.items() for row in _rows(name, clip, alone, taken)]

"""The window starts at once, shows a clip at once, and never stands still, whatever runs beside it."""

import os
from pathlib import Path
from statistics import median

from clips import HD720, HD1080, Clip, Footage, made
from common import WINDOW, Plan
from measure import output_of
from report import Row, at_least, at_most

HD1080_60 = Footage("1080p60", "1920x1080", HD1080.content, rate=60)
# So that 720p is drawn in its own size, beside the controls.
WIDE = ("--width", "1660", "--height", "860")


def _window(folder: Path, *arguments: str) -> list[float]:
    """What the program prints, with folders of its own, drawn without a graphics card."""
    environment = [f"{name}={folder / name.lower()}" for name in
                   ("HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME")]
    printed = output_of(["env", *environment, "LIBGL_ALWAYS_SOFTWARE=1",
                         "xvfb-run", "-a", "-s", "-screen 0 1920x1200x24", str(WINDOW), *arguments])
    numbers = []
    for line in printed.splitlines():
        try:
            numbers += [float(word) for word in line.split()]
        except ValueError:
            pass  # A diagnostic.
    return numbers


def _beats(what: str, on: str, runs: list[list[float]]) -> Row:
    longest = max(run[1] for run in runs)
    return Row(f"99 of 100 answers of the main thread {what}", on, median(run[0] for run in runs), at_most(16),
               unit="ms", note=f"longest {longest:.0f} ms")


def measure(plan: Plan, folder: Path) -> list[Row]:
    hd: Clip = made(HD720, plan.seconds(10))
    fast: Clip = made(HD1080_60, plan.seconds(20))
    os.makedirs(folder / "home", exist_ok=True)
    taken: dict[str, list[list[float]]] = {}
    commands = {"start": ["start"], "open": ["open", str(hd.path)], "job": ["job", str(hd.path)],
                "fast": ["play", str(fast.path), "-10"], "play": [*WIDE, "play", str(hd.path), "-1"]}
    for _ in range(plan.rounds):
        for name, command in commands.items():
            taken.setdefault(name, []).append(_window(folder, *command))
    return [
        Row("start to the first picture of the window", "", median(run[0] for run in taken["start"]), at_most(1000),
            unit="ms"),
        Row("choice of a clip to its first picture", hd.name, median(run[0] for run in taken["open"]),
            at_most(300), unit="ms"),
        _beats("during a job", hd.name, taken["job"]),
        _beats("at -10", fast.name, taken["fast"]),
        Row("drawn of the pictures that were due at -1", hd.name, median(run[2] for run in taken["play"]),
            at_least(0.95)),
    ]

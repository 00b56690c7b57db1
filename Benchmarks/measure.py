"""Runs programs and takes what they cost."""

import os
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from statistics import median

from common import BenchmarkError


@dataclass(frozen=True)
class Cost:
    wall: float  # seconds
    cpu: float  # seconds of all threads, in the program and in the kernel
    peak: int  # bytes of memory


def run(command: list[str]) -> Cost:
    """Starts from a disk that has nothing left to write, so that no run pays for the one before."""
    os.sync()
    with tempfile.TemporaryFile() as messages:
        start = time.monotonic()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=messages, stderr=messages)
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            messages.seek(0)
            text = messages.read().decode(errors="replace")[-2000:]
            raise BenchmarkError(f"{' '.join(command)}\nended with {process.returncode}: {text}")
    return Cost(wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024)


def _median_cost(costs: list[Cost]) -> Cost:
    return Cost(median(cost.wall for cost in costs), median(cost.cpu for cost in costs),
                int(median(cost.peak for cost in costs)))


def interleaved(rounds: int, commands: dict[str, list[str]]) -> dict[str, Cost]:
    """The medians of rounds in which each command runs once: what disturbs the machine a while hits all."""
    costs: dict[str, list[Cost]] = {name: [] for name in commands}
    for number in range(rounds):
        for name, command in commands.items():
            print(f"  round {number + 1} of {rounds}: {name}", file=sys.stderr, flush=True)
            costs[name].append(run(command))
    return {name: _median_cost(taken) for name, taken in costs.items()}


def output_of(command: list[str]) -> str:
    """What an untimed helper prints, on both of its streams."""
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, check=False)
    if done.returncode != 0:
        raise BenchmarkError(f"{' '.join(command)}\nended with {done.returncode}: {done.stdout[-2000:]}")
    return done.stdout

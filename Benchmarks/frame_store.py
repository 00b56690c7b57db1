"""Saving and loading frames runs at the speed of plain files."""

import json
from pathlib import Path
from statistics import median

from common import FRAME_STORE, BenchmarkError, Plan
from measure import output_of
from report import Row

# A round takes a fraction of a second, and files in memory vary much.
REPETITIONS_A_ROUND = 5
PAIRS = (("saveFrame", "write"), ("loadFrame", "read"))
FORMATS = ("420v", "x420")


def _throughputs(repetitions: int, report: Path) -> dict[str, float]:
    """The median bytes a second of each benchmark, by action/format."""
    output_of([str(FRAME_STORE), f"--benchmark_repetitions={repetitions}",
               "--benchmark_enable_random_interleaving=true", f"--benchmark_out={report}",
               "--benchmark_out_format=json"])
    taken: dict[str, list[float]] = {}
    for entry in json.loads(report.read_text())["benchmarks"]:
        if entry.get("error_occurred"):
            raise BenchmarkError(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] == "iteration":
            name = "/".join(entry["name"].split("/")[:2])
            taken.setdefault(name, []).append(entry["bytes_per_second"])
    return {name: median(values) for name, values in taken.items()}


def measure(plan: Plan, folder: Path) -> list[Row]:
    speeds = _throughputs(plan.rounds * REPETITIONS_A_ROUND, folder / "frame_store.json")
    rows = []
    for action, plain in PAIRS:
        for form in FORMATS:
            speed, plain_speed = speeds[f"{action}/{form}"], speeds[f"{plain}/{form}"]
            rows.append(Row(f"throughput, {action}", f"1080p {form}", speed / 1e6, unit="MB/s"))
            rows.append(Row(f"throughput, {action} / plain {plain}()", f"1080p {form}", speed / plain_speed))
    return rows

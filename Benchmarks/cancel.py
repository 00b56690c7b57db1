"""How soon a cancelled job ends, at random moments of each stage of each output type, and what it leaves."""

from pathlib import Path

from clips import HD1080, made
from common import CANCEL_JOBS, Plan
from measure import output_of
from report import Row, at_most

ROUNDS = 50  # of each stage


def measure(plan: Plan, _: Path) -> list[Row]:
    clip = made(HD1080, 1)  # every round runs all stages before its own
    rounds = max(1, round(ROUNDS * plan.length_scale))
    rows: list[Row] = []
    for line in output_of([str(CANCEL_JOBS), str(clip.path), str(rounds)]).splitlines():
        match line.split():
            case ["memory", before, after]:
                rows.append(Row("memory after all cancelled jobs / before", clip.name, int(after) / int(before),
                                at_most(1.10)))
            case ["files", before, after]:
                rows.append(Row("open files after all cancelled jobs, more than before", clip.name,
                                int(after) - int(before), at_most(0)))
            case [kind, stage, median, worst]:
                on = f"{kind}, {stage}, {clip.name}"
                rows.append(Row("from cancel to its event, median", on, float(median), unit="ms"))
                rows.append(Row("from cancel to its event, worst", on, float(worst), at_most(200), unit="ms"))
    return rows

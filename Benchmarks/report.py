"""The table of what was measured."""

import operator
from collections.abc import Callable
from dataclasses import dataclass


@dataclass(frozen=True)
class Limit:
    sign: str
    bound: float
    holds: Callable[[float, float], bool]


def at_most(bound: float) -> Limit:
    return Limit("≤", bound, operator.le)


def at_least(bound: float) -> Limit:
    return Limit("≥", bound, operator.ge)


@dataclass(frozen=True)
class Row:
    """A line of the table. Without a limit it claims nothing; without a value it tells why it has none."""

    what: str
    clip: str
    value: float | None
    limit: Limit | None = None
    unit: str = ""
    note: str = ""

    def verdict(self) -> str:
        if self.limit is None or self.value is None:
            return ""
        return "PASS" if self.limit.holds(self.value, self.limit.bound) else "MISS"

    def _with_unit(self, value: float) -> str:
        digits = 0 if self.unit in ("MB", "MB/s") else 2
        return f"{value:.{digits}f} {self.unit}".rstrip()

    def cells(self) -> list[str]:
        measured = self.note if self.value is None else self._with_unit(self.value)
        limit = f"{self.limit.sign} {self._with_unit(self.limit.bound)}" if self.limit else ""
        return [self.what, self.clip, measured, limit, self.verdict()]


def table(rows: list[Row]) -> str:
    lines = [["measured", "on", "result", "limit", ""], *(row.cells() for row in rows)]
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    padded = ["| " + " | ".join(map(str.ljust, line, widths)) + " |" for line in lines]
    padded.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(padded)


def summary(rows: list[Row]) -> str:
    verdicts = [row.verdict() for row in rows]
    claims = len(verdicts) - verdicts.count("")
    return f"{verdicts.count('PASS')} of {claims} claims hold, {verdicts.count('MISS')} missed."

"""Measures the claims that are named, all of them by default, and prints one table."""

import argparse
import os
import sys
import tempfile
from pathlib import Path
from types import ModuleType

import cancel
import exports
import frame_store
import job
import memory
import playback
import quality
import services
import speed
import window
from common import BUILD, FULL_PLAN, QUICK_PLAN, BenchmarkError, Plan, export_video_encoder, \
    project_options, project_preset
from report import Row, summary, table

CLAIMS: dict[str, ModuleType] = {module.__name__: module
                                 for module in (speed, memory, quality, frame_store, exports, job, playback,
                                                   services, window, cancel)}

HELP = """\
All numbers of a table come from one run: the programs take turns, and the medians of their rounds are
compared. A missed claim is told in the table and in the summary below it; the exit status is 0 all the same.
Status 1 means that something couldn't be measured.

The environment variable ANADROME_MEDIA may name a clip of one's own: quality then measures its first five
seconds too. It must be 8-bit 4:2:0 of even size with square pixels. The frames of a minute take 5.6 GB in the
cache folder while memory runs."""


def _arguments() -> argparse.Namespace:
    about = "; ".join(f"{name}: {(module.__doc__ or '').strip()}" for name, module in CLAIMS.items())
    parser = argparse.ArgumentParser(prog="scripts/bench", epilog=HELP, description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("claims", nargs="*", metavar="CLAIM", help=about)
    parser.add_argument("--quick", action="store_true",
                        help="one round on clips a tenth as long: shows that all runs, and measures nothing")
    arguments = parser.parse_args()
    if unknown := [name for name in arguments.claims if name not in CLAIMS]:
        parser.error(f"no claim is named {unknown[0]}; there are {', '.join(CLAIMS)}")
    return arguments


def _conditions(plan: Plan, load_before: float) -> str:
    return (f"libx265 {project_preset()}, {project_options()}; "
            f"exports: {' '.join(export_video_encoder())}; {os.cpu_count()} cores, load average before "
            f"{load_before:.1f}, after {os.getloadavg()[0]:.1f}; medians; interleaved rounds: {plan.rounds}.")


def _measure(names: list[str], plan: Plan) -> list[Row]:
    rows = []
    for name in names:
        print(f"Measuring {name}", file=sys.stderr, flush=True)
        with tempfile.TemporaryDirectory(prefix="measuring-", dir=BUILD) as folder:
            rows += CLAIMS[name].measure(plan, Path(folder))
    return rows


def main() -> int:
    arguments = _arguments()
    plan = QUICK_PLAN if arguments.quick else FULL_PLAN
    load_before = os.getloadavg()[0]
    try:
        rows = _measure(arguments.claims or list(CLAIMS), plan)
    except BenchmarkError as error:
        print(f"scripts/bench: {error}", file=sys.stderr)
        return 1
    if arguments.quick:
        print("A quick run: the numbers below mean nothing.\n")
    print(table(rows), _conditions(plan, load_before), summary(rows), sep="\n\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())

"""Memory doesn't grow with the clip, but for its decoded sound."""

from pathlib import Path

from clips import PLAIN1080, Clip, made
from common import Plan, reverse_with_filter, reverse_with_program
from measure import interleaved, run
from report import Row, at_most

# The filter holds the pictures of a minute, about 6 GB.
FILTER_NEEDS = 10 * 10**9


def _available_memory() -> int:
    fields = dict(line.split(":") for line in Path("/proc/meminfo").read_text().splitlines())
    return int(fields["MemAvailable"].split()[0]) * 1024


def _filter_rows(clip: Clip, program_peak: int, folder: Path) -> list[Row]:
    """One round: what the filter holds is the same every time."""
    peak = run(reverse_with_filter(clip.path, clip.bit_rate, folder / "filtered.mov")).peak
    return [Row("peak memory, ffmpeg reverse", clip.name, peak / 1e6, unit="MB"),
            Row("peak memory, ffmpeg reverse / anadrome", clip.name, peak / program_peak)]


def measure(plan: Plan, folder: Path) -> list[Row]:
    # What the pictures show makes no difference to memory, and plain ones are encoded sooner.
    short, long = made(PLAIN1080, plan.seconds(10)), made(PLAIN1080, plan.seconds(60))
    commands = {clip.name: reverse_with_program(clip.path, folder / "anadrome.mov") for clip in (short, long)}
    peaks = {name: cost.peak for name, cost in interleaved(plan.rounds, commands).items()}
    beside_sound = {clip.name: peaks[clip.name] - clip.sound_bytes() for clip in (short, long)}

    rows = [Row("peak memory without the decoded sound, anadrome", f"{long.name} / {short.name}",
                beside_sound[long.name] / beside_sound[short.name], at_most(1.10))]
    rows += [Row("peak memory, anadrome", clip.name, peaks[clip.name] / 1e6, at_most(350), "MB")
             for clip in (short, long)]
    rows += _filter_rows(short, peaks[short.name], folder)
    if _available_memory() < FILTER_NEEDS:
        return [*rows, Row("peak memory, ffmpeg reverse", long.name, None, note="skipped: under 10 GB free")]
    return rows + _filter_rows(long, peaks[long.name], folder)

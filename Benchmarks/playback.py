"""Backward play needs a third of mpv's memory, and no longer to its first picture."""

from pathlib import Path

from clips import Clip, Footage, made, packet_sizes
from common import PLAY_BACKWARDS, Plan
from measure import interleaved, output_of
from report import Row, at_most

# As hard to code as what a camera takes; in the second, eight seconds hang on one key frame.
SHORT_GROUPS = Footage("1080p30", "1920x1080", ("--rich", "--bitrate", "8000000"))
LONG_GROUPS = Footage("1080p30 groups of 250", "1920x1080",
                      ("--rich", "--bitrate", "8000000", "--gop", "250"))

MPV = ["mpv", "--no-config", "--really-quiet", "--vo=null", "--no-audio", "--play-dir=backward"]
# What a preview on a phone's screen would take.
SMALL = ("--width", "640", "--height", "360")


def _play(clip: Clip, *options: str) -> list[str]:
    return [str(PLAY_BACKWARDS), str(clip.path), *options]


def _rows(clip: Clip, plan: Plan) -> list[Row]:
    names = ("anadrome", "mpv", "anadrome, first picture", "mpv, first picture")
    costs = interleaved(plan.rounds, {f"{clip.name}, {name}": command for name, command in zip(names, (
        _play(clip), [*MPV, str(clip.path)], _play(clip, "--only-first"), [*MPV, "--frames=1", str(clip.path)]
    ))})
    whole, peer_whole, first, peer_first = costs.values()
    return [
        Row("peak memory, anadrome", clip.name, whole.peak / 1e6, at_most(300), "MB"),
        Row("peak memory, anadrome / mpv", clip.name, whole.peak / peer_whole.peak, at_most(1 / 3)),
        Row("time to the first picture, anadrome / mpv", clip.name, first.wall / peer_first.wall,
            at_most(1.0)),
        Row("CPU time, anadrome / mpv", clip.name, whole.cpu / peer_whole.cpu),
    ] + [_shown(clip, options) for options in ((), SMALL)]


def _shown(clip: Clip, options: tuple[str, ...]) -> Row:
    """How many of the clip's pictures come on screen in time at the normal rate."""
    size = "640x360" if options else "full size"
    share = int(output_of(_play(clip, *options))) / len(packet_sizes(clip.path))
    return Row("pictures shown / pictures", f"{clip.name}, {size}", share)


def measure(plan: Plan, _: Path) -> list[Row]:
    return [row for footage in (SHORT_GROUPS, LONG_GROUPS)
            for row in _rows(made(footage, plan.seconds(20)), plan)]

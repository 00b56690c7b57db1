"""The preset gives away little quality at the source's bit rate, and is much faster than the usual one."""

import os
import re
import sys
from pathlib import Path

from clips import HD720, HD1080, Clip, described, made, packet_sizes, picture_input, reversed_pictures
from common import CLIPS, FFMPEG, YARDSTICK_PRESET, BenchmarkError, Plan, project_preset, \
    reverse_with_program, video_encoder
from measure import Cost, interleaved, output_of, run
from report import Row, at_least, at_most

REAL_CLIP = "ANADROME_MEDIA"
SECONDS = 5


def _luma_psnr(movie: Path, clip: Clip, raw: Path) -> float:
    """In decibels, over all frames, which are paired by their number."""
    frames = raw.stat().st_size // (clip.width * clip.height * 3 // 2)
    if (written := len(packet_sizes(movie))) != frames:
        raise BenchmarkError(f"{movie} has {written} frames and not {frames}")
    count = "settb=1/1000,setpts=N"
    printed = output_of(["ffmpeg", "-nostdin", "-hide_banner", "-noautorotate", "-i", str(movie),
                         *picture_input(clip.size, clip.frame_rate, raw), "-lavfi",
                         f"[0:v]{count}[a];[1:v]{count}[b];[a][b]psnr",
                         "-fps_mode", "passthrough", "-f", "null", "-"])
    found = re.search(r"PSNR y:([\d.]+)", printed)
    if not found:
        raise BenchmarkError(f"no finite PSNR of {movie}: {printed[-2000:]}")
    return float(found[1])


def _encode(clip: Clip, raw: Path, preset: str, movie: Path) -> list[str]:
    return [*FFMPEG, *picture_input(clip.size, clip.frame_rate, raw), *video_encoder(preset, clip.bit_rate),
            str(movie)]


def _rows(clip: Clip, costs: dict[str, Cost], movies: dict[str, Path], raw: Path) -> list[Row]:
    psnr = {name: _luma_psnr(movie, clip, raw) for name, movie in movies.items()}
    size = {name: sum(packet_sizes(movie)) for name, movie in movies.items()}
    own, usual = project_preset(), YARDSTICK_PRESET
    return [
        Row(f"PSNR, {usual} − {own}", clip.name, psnr[usual] - psnr[own], at_most(1.2), "dB"),
        Row(f"PSNR, {usual} − anadrome's movie", clip.name, psnr[usual] - psnr["anadrome"], at_most(1.2),
            "dB"),
        Row("PSNR of anadrome's movie against the source reversed", clip.name, psnr["anadrome"], unit="dB"),
        Row(f"bytes, {own} / {usual}", clip.name, size[own] / size[usual]),
        Row(f"bytes, anadrome's movie / {usual}", clip.name, size["anadrome"] / size[usual]),
        Row(f"wall time of encoding, {usual} / {own}", clip.name, costs[usual].wall / costs[own].wall,
            at_least(2)),
        Row(f"CPU time of encoding, {usual} / {own}", clip.name, costs[usual].cpu / costs[own].cpu,
            at_least(2)),
    ]


def _measure_clip(clip: Clip, plan: Plan, folder: Path) -> list[Row]:
    raw = reversed_pictures(clip, folder)
    movies = {name: folder / f"{name}.mov" for name in (project_preset(), YARDSTICK_PRESET, "anadrome")}
    costs = interleaved(plan.rounds, {preset: _encode(clip, raw, preset, movies[preset])
                                      for preset in (project_preset(), YARDSTICK_PRESET)})
    run(reverse_with_program(clip.path, movies["anadrome"]))
    return _rows(clip, costs, movies, raw)


def _start_of_real_clip(path: Path) -> Clip | None:
    start = CLIPS / ("start-of-" + path.with_suffix(".mp4").name)
    CLIPS.mkdir(parents=True, exist_ok=True)
    output_of([*FFMPEG, "-i", str(path), "-map", "0:v:0", "-c", "copy", "-t", str(SECONDS), str(start)])
    clip = described(start, path.name)
    if clip.is_plain:
        return clip
    print(f"  {path} left out: its pictures aren't 8-bit 4:2:0 of even size with square pixels",
          file=sys.stderr)
    return None


def measure(plan: Plan, folder: Path) -> list[Row]:
    clips = [made(footage, plan.seconds(SECONDS)) for footage in (HD720, HD1080)]
    if real := os.environ.get(REAL_CLIP):
        clips += filter(None, [_start_of_real_clip(Path(real))])
    return [row for clip in clips for row in _measure_clip(clip, plan, folder)]

"""Reversing costs hardly more time than the decoding and the encoding that it cannot do without."""

from pathlib import Path

from clips import HD720, HD1080, Clip, made, picture_input, reversed_pictures, reversed_sound, sound_input
from common import FFMPEG, Plan, project_preset, reverse_with_filter, reverse_with_program, sound_encoder, \
    video_encoder
from measure import Cost, interleaved
from report import Row, at_most


def _commands(clip: Clip, folder: Path) -> dict[str, list[str]]:
    raw_inputs = [*picture_input(clip.size, clip.frame_rate, reversed_pictures(clip, folder)),
                  *sound_input(clip, reversed_sound(clip, folder))]
    return {
        "anadrome": reverse_with_program(clip.path, folder / "anadrome.mov"),
        "decode alone": [*FFMPEG, "-i", str(clip.path), "-f", "null", "-"],
        "encode alone": [*FFMPEG, *raw_inputs, *video_encoder(project_preset(), clip.bit_rate),
                         *sound_encoder(), str(folder / "encoded.mov")],
        "ffmpeg reverse": reverse_with_filter(clip.path, clip.bit_rate, folder / "filtered.mov"),
    }


def _rows(clip: Clip, costs: dict[str, Cost]) -> list[Row]:
    program, decode, encode, peer = costs.values()
    return [
        Row("wall time, anadrome / (decode alone + encode alone)", clip.name,
            program.wall / (decode.wall + encode.wall), at_most(1.10)),
        Row("wall time, anadrome / ffmpeg reverse", clip.name, program.wall / peer.wall, at_most(1.0)),
        Row("CPU time, anadrome / (decode alone + encode alone)", clip.name,
            program.cpu / (decode.cpu + encode.cpu)),
        Row("CPU time, anadrome / ffmpeg reverse", clip.name, program.cpu / peer.cpu),
    ]


def measure(plan: Plan, folder: Path) -> list[Row]:
    rows = []
    for footage in (HD720, HD1080):
        clip = made(footage, plan.seconds(10))
        rows += _rows(clip, interleaved(plan.rounds, _commands(clip, folder)))
    return rows

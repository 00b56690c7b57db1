"""The clips that are measured on, and their raw content turned round."""

import json
import sys
from dataclasses import dataclass
from fractions import Fraction
from pathlib import Path
from typing import Any

from common import CLIP_MAKER, CLIPS, FFMPEG
from measure import output_of


@dataclass(frozen=True)
class Clip:
    path: Path
    name: str
    width: int
    height: int
    frame_rate: Fraction
    is_plain: bool  # 8-bit 4:2:0 of even size with square pixels: stored as it is shown
    bit_rate: int  # of the pictures, as the program sees it: their bytes over their duration
    sound_rate: int
    channels: int  # 0 without sound
    seconds: float

    @property
    def size(self) -> tuple[int, int]:
        return self.width, self.height

    def sound_bytes(self) -> int:
        """Of all sound, decoded to 16 bits."""
        return int(self.seconds * self.sound_rate * self.channels * 2)


@dataclass(frozen=True)
class Footage:
    name: str
    size: str
    content: tuple[str, ...] = ()  # what the clip maker is told beside these; plain pictures by default
    rate: int = 30


# As hard to code as what a camera takes, at a camera's bit rates.
HD720 = Footage("720p30", "1280x720", ("--rich", "--bitrate", "4000000"))
HD1080 = Footage("1080p30", "1920x1080", ("--rich", "--bitrate", "8000000"))
# In groups as the encoder makes them that nobody told otherwise; the others have a key frame a second.
LONG_GROUPS720 = Footage("720p30 in groups of 250", "1280x720", (*HD720.content, "--gop", "250"))
PLAIN1080 = Footage("plain 1080p30", "1920x1080")


def made(footage: Footage, seconds: float) -> Clip:
    """Made once and kept for the next run."""
    name = f"{footage.name} {seconds:g} s"
    path = CLIPS / f"{footage.name.replace(' ', '-')}-{seconds:g}s.mp4"
    if not path.exists():
        print(f"  making {path.name}", file=sys.stderr, flush=True)
        CLIPS.mkdir(parents=True, exist_ok=True)
        partial = path.with_name("partial-" + path.name)
        output_of([str(CLIP_MAKER), str(partial), "--size", footage.size, "--rate", str(footage.rate), "--seconds",
                   str(seconds), "--preset", "veryfast", *footage.content])
        partial.replace(path)
    return described(path, name)


def _is_plain(picture: dict[str, Any]) -> bool:
    return (picture["pix_fmt"] == "yuv420p" and picture["width"] % 2 == 0 and picture["height"] % 2 == 0
            and picture.get("sample_aspect_ratio", "1:1") in ("1:1", "0:1"))


def described(path: Path, name: str) -> Clip:
    probe = json.loads(output_of(["ffprobe", "-v", "error", "-of", "json", "-show_streams", "-show_format",
                                  str(path)]))
    picture = next(stream for stream in probe["streams"] if stream["codec_type"] == "video")
    sound = next((stream for stream in probe["streams"] if stream["codec_type"] == "audio"), {})
    return Clip(path, name, picture["width"], picture["height"], Fraction(picture["avg_frame_rate"]),
                _is_plain(picture), int(picture["bit_rate"]), int(sound.get("sample_rate", 0)),
                sound.get("channels", 0), float(probe["format"]["duration"]))


def reversed_pictures(clip: Clip, folder: Path) -> Path:
    """The clip's stored pictures, raw, from last to first."""
    raw = folder / "pictures.yuv"
    output_of([*FFMPEG, "-noautorotate", "-i", str(clip.path), "-map", "0:v:0", "-vf", "reverse", "-fps_mode",
               "passthrough", "-pix_fmt", "yuv420p", "-f", "rawvideo", str(raw)])
    return raw


def reversed_sound(clip: Clip, folder: Path) -> Path:
    raw = folder / "sound.pcm"
    output_of([*FFMPEG, "-i", str(clip.path), "-map", "0:a:0", "-af", "areverse", "-f", "s16le", str(raw)])
    return raw


def picture_input(size: tuple[int, int], frame_rate: Fraction | int, raw: Path) -> list[str]:
    """ffmpeg's arguments to read raw pictures."""
    return ["-f", "rawvideo", "-pixel_format", "yuv420p", "-video_size", f"{size[0]}x{size[1]}",
            "-framerate", str(frame_rate), "-i", str(raw)]


def packet_sizes(movie: Path) -> list[int]:
    """The bytes of each of its pictures."""
    sizes = output_of(["ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries", "packet=size",
                       "-of", "csv=print_section=0", str(movie)])
    return [int(size.strip(",")) for size in sizes.split()]


def sound_input(clip: Clip, raw: Path) -> list[str]:
    return ["-f", "s16le", "-sample_rate", str(clip.sound_rate), "-channels", str(clip.channels),
            "-i", str(raw)]

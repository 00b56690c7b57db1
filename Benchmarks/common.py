"""Where things are, how a run is sized, and the encoder's settings as the program itself has them."""

import re
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "bench"
CLI = BUILD / "Terminal" / "anadrome-cli"
CLIP_MAKER = BUILD / "Tests" / "anadrome-make-clip"
EXPORT_CLIP = BUILD / "Benchmarks" / "anadrome-export-clip"
PLAY_BACKWARDS = BUILD / "Benchmarks" / "anadrome-play-backwards"
WHOLE_START = BUILD / "Benchmarks" / "anadrome-whole-start"
WINDOW = BUILD / "Benchmarks" / "anadrome-window-at-work"
CANCEL_JOBS = BUILD / "Benchmarks" / "anadrome-cancel-jobs"
FRAME_STORE = BUILD / "Benchmarks" / "frame_store_bench"
CLIPS = BUILD / "clips"

ENCODERS = ROOT / "Platform" / "AVFoundation" / "Libav"
REVERSAL_ENCODER = ENCODERS / "HEVCEncoder.cpp"
EXPORT_ENCODER = ENCODERS / "H264Encoder.cpp"
YARDSTICK_PRESET = "medium"

FFMPEG = ["ffmpeg", "-v", "error", "-nostdin", "-y"]


class BenchmarkError(Exception):
    """Something couldn't be measured."""


@dataclass(frozen=True)
class Plan:
    """How much is measured: a quick plan only shows that everything works."""

    rounds: int
    length_scale: float

    def seconds(self, full_length: float) -> float:
        return full_length * self.length_scale


FULL_PLAN = Plan(rounds=3, length_scale=1)
QUICK_PLAN = Plan(rounds=1, length_scale=0.1)


def _constant(source: Path, name: str) -> str:
    """The text or number that a constant in a source is set to."""
    found = re.findall(rf'\b{name}\s*=\s*([^;]+);', source.read_text())
    if len(found) != 1:
        raise BenchmarkError(f"{source}: expected one {name}, found {len(found)}")
    literals = re.findall(r'"([^"]*)"', found[0])
    return "".join(literals) if literals else found[0]


def project_preset() -> str:
    return _constant(REVERSAL_ENCODER, "x265Preset")


def project_options() -> str:
    return _constant(REVERSAL_ENCODER, "x265Tuning") + ":log-level=none"


def video_encoder(preset: str, bit_rate: int) -> list[str]:
    """ffmpeg's arguments for the encoder: the program's own settings, or another preset as it is."""
    options = project_options() if preset == project_preset() else "open-gop=0:info=0:log-level=none"
    return ["-c:v", "libx265", "-preset", preset, "-b:v", str(bit_rate), "-x265-params", options,
            "-tag:v", "hvc1"]


def export_video_encoder() -> list[str]:
    """ffmpeg's arguments for the encoder of exports."""
    return ["-c:v", "libx264", "-profile:v", "high", "-preset", _constant(EXPORT_ENCODER, "x264Preset"),
            "-crf", _constant(EXPORT_ENCODER, "constantRateFactor"),
            "-g", _constant(EXPORT_ENCODER, "keyFrameInterval"), "-pix_fmt", "yuv420p"]


def sound_encoder(sample_rate: int = 44100) -> list[str]:
    return ["-c:a", "aac", "-b:a", "128k", "-ar", str(sample_rate), "-ac", "2"]


def reverse_with_program(clip: Path, movie: Path) -> list[str]:
    return [str(CLI), "reverse", str(clip), "-o", str(movie), "--force", "--quiet"]


def reverse_with_filter(clip: Path, bit_rate: int, movie: Path) -> list[str]:
    """The same work by ffmpeg's reverse filters, which hold all pictures in memory."""
    return [*FFMPEG, "-i", str(clip), "-vf", "reverse", "-af", "areverse",
            *video_encoder(project_preset(), bit_rate), *sound_encoder(), str(movie)]

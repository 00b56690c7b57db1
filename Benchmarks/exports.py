"""Exports take no longer than the same edit by ffmpeg, and a long one no more memory than a short one."""

from dataclasses import dataclass
from pathlib import Path

from clips import HD720, HD1080, PLAIN1080, Clip, made, packet_sizes, picture_input
from common import EXPORT_CLIP, FFMPEG, BenchmarkError, Plan, export_video_encoder, sound_encoder
from measure import Cost, interleaved, output_of
from report import Row, at_most

SPEED = 2
# What the exports are asked for, and its box.
QUALITY = 1
BOX = (1280, 720)
FRAME_RATE = 30


@dataclass(frozen=True)
class Edit:
    """The same work for the program and for ffmpeg, whose filters end in [v] and [a]."""

    name: str
    clips: tuple[Clip, ...]
    filters: str
    muxing: tuple[str, ...] = ()

    def describe(self) -> str:
        return f"{self.name}, {' + '.join(clip.name for clip in self.clips)}"

    def encoders(self) -> list[str]:
        """At the sound's own rate, as the program does."""
        return [*export_video_encoder(), *sound_encoder(self.clips[0].sound_rate), *self.muxing]

    def with_program(self, movie: Path) -> list[str]:
        return [str(EXPORT_CLIP), self.name, *(str(clip.path) for clip in self.clips), "-o", str(movie),
                "--speed", str(SPEED), "--quality", str(QUALITY)]

    def with_filters(self) -> list[str]:
        inputs = [argument for clip in self.clips for argument in ("-i", str(clip.path))]
        return [*FFMPEG, *inputs, "-filter_complex", self.filters]

    def with_ffmpeg(self, movie: Path) -> list[str]:
        return [*self.with_filters(), "-map", "[v]", "-map", "[a]", *self.encoders(), str(movie)]


def size_in_box(clip: Clip) -> tuple[int, int]:
    """In the box; what fits stays as it is."""
    scale = min(1, BOX[0] / clip.width, BOX[1] / clip.height)
    return round(clip.width * scale), round(clip.height * scale)


def _edits(clip: Clip, part: Clip) -> list[Edit]:
    width, height = size_in_box(clip)
    scale = f"scale={width}:{height}"
    steady = f"fps={FRAME_RATE}"
    return [
        Edit("speed", (clip,),
             f"[0:v]setpts=PTS/{SPEED},{steady},{scale}[v];"
             f"[0:a]asetrate={clip.sound_rate * SPEED},aresample={clip.sound_rate}[a]"),
        Edit("merge", (part, part),
             f"[0:v][0:a][1:v][1:a]concat=n=2:v=1:a=1[joined][a];[joined]{steady},{scale}[v]",
             ("-movflags", "+faststart")),
        Edit("compress", (clip,), f"[0:v]{scale}[v];[0:a]anull[a]"),
    ]


def _encode(edit: Edit, folder: Path, movie: Path) -> list[str]:
    """The encoders on what the edit's filters give, made beforehand."""
    pictures, sound = folder / f"{edit.name}.yuv", folder / f"{edit.name}.wav"
    output_of([*edit.with_filters(), "-map", "[v]", "-pix_fmt", "yuv420p", "-f", "rawvideo", str(pictures),
               "-map", "[a]", str(sound)])
    width, height = size_in_box(edit.clips[0])
    return [*FFMPEG, *picture_input((width, height), FRAME_RATE, pictures), "-i", str(sound),
            *edit.encoders(), str(movie)]


def _decode(edit: Edit) -> list[str]:
    inputs = [argument for clip in edit.clips for argument in ("-i", str(clip.path))]
    every = [argument for number in range(len(edit.clips)) for argument in ("-map", str(number))]
    return [*FFMPEG, *inputs, *every, "-f", "null", "-"]


def check_frames(movies: list[Path], tolerance: int = 0) -> None:
    counts = {movie.name: len(packet_sizes(movie)) for movie in movies}
    if max(counts.values()) - min(counts.values()) > tolerance:
        raise BenchmarkError(f"the movies differ in their numbers of frames: {counts}")


def _rows(edit: Edit, costs: dict[str, Cost]) -> list[Row]:
    program, peer, decode, encode = costs.values()
    on = edit.describe()
    is_encoder_slowest = encode.wall >= decode.wall
    return [
        Row("wall time, anadrome / ffmpeg", on, program.wall / peer.wall, at_most(1.0)),
        Row("wall time, anadrome / encode alone", on, program.wall / encode.wall,
            at_most(1.10) if is_encoder_slowest else None),
        Row("wall time, decode alone / encode alone", on, decode.wall / encode.wall),
        Row("wall time, anadrome / (decode alone + encode alone)", on,
            program.wall / (decode.wall + encode.wall)),
        Row("CPU time, anadrome / ffmpeg", on, program.cpu / peer.cpu),
        Row("CPU time, anadrome / (decode alone + encode alone)", on,
            program.cpu / (decode.cpu + encode.cpu)),
    ]


def _measure_edit(edit: Edit, plan: Plan, folder: Path) -> list[Row]:
    movies = {name: folder / f"{edit.name}-{name}.mp4" for name in ("anadrome", "ffmpeg", "encode")}
    costs = interleaved(plan.rounds, {
        f"{edit.name}, anadrome": edit.with_program(movies["anadrome"]),
        f"{edit.name}, ffmpeg": edit.with_ffmpeg(movies["ffmpeg"]),
        f"{edit.name}, decode alone": _decode(edit),
        f"{edit.name}, encode alone": _encode(edit, folder, movies["encode"]),
    })
    check_frames(list(movies.values()))
    return _rows(edit, costs)


def _memory_rows(plan: Plan, folder: Path) -> list[Row]:
    short, long = made(PLAIN1080, plan.seconds(10)), made(PLAIN1080, plan.seconds(60))
    commands = {clip.name: Edit("speed", (clip,), "").with_program(folder / "memory.mp4")
                for clip in (short, long)}
    peaks = {name: cost.peak for name, cost in interleaved(plan.rounds, commands).items()}
    rows = [Row("peak memory, anadrome", f"speed, {long.name} / {short.name}",
                peaks[long.name] / peaks[short.name], at_most(1.10))]
    return rows + [Row("peak memory, anadrome", f"speed, {clip.name}", peaks[clip.name] / 1e6, unit="MB")
                   for clip in (short, long)]


def measure(plan: Plan, folder: Path) -> list[Row]:
    rows = []
    for footage in (HD720, HD1080):
        for edit in _edits(made(footage, plan.seconds(10)), made(footage, plan.seconds(5))):
            rows += _measure_edit(edit, plan, folder)
    return rows + _memory_rows(plan, folder)

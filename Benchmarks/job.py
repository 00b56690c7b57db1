"""A whole job takes no longer than its stages one by one in ffmpeg, and less time than a reversal by melt."""

from dataclasses import dataclass
from pathlib import Path

from clips import HD720, HD1080, LONG_GROUPS720, Clip, made
from common import CLI, FFMPEG, Plan, export_video_encoder, reverse_with_filter, sound_encoder
from exports import BOX, FRAME_RATE, check_frames, size_in_box
from measure import Cost, interleaved
from report import Row, at_most


@dataclass(frozen=True)
class Job:
    """What the program makes in one go, and the commands of ffmpeg that together do the same."""

    name: str
    options: tuple[str, ...]
    stages: tuple[str, ...]


TO_BACKWARD = ("reverse", "speed backward")
TO_BOTH = (*TO_BACKWARD, "speed forward", "join")
BACKWARD = Job("reverse", (), TO_BACKWARD)
JOBS = (
    BACKWARD,
    Job("reverse-forward", ("--output-type", "reverse-forward"), TO_BOTH),
    Job("reverse-forward with metadata", ("--output-type", "reverse-forward", "--keep-metadata"),
        (*TO_BOTH, "metadata")),
)

# A reversal has sound of this rate, whatever the clip's.
REVERSED_SOUND_RATE = 44100

# How many threads melt prepares pictures in, which depends on the clip. With none of these it drops pictures.
MELT_THREADS = (0, 1, 2)


def _with_program(job: Job, clip: Clip, movie: Path) -> list[str]:
    return [str(CLI), "make", str(clip.path), *job.options, "--quality", "medium", "-o", str(movie),
            "--force", "--quiet"]


def _export(inputs: list[Path], filters: str, sound_rate: int, *output: str) -> list[str]:
    """The filters end in [v] and [a]."""
    named = [argument for path in inputs for argument in ("-i", str(path))]
    return [*FFMPEG, *named, "-filter_complex", filters, "-map", "[v]", "-map", "[a]",
            *export_video_encoder(), *sound_encoder(sound_rate), *output]


def _stages(clip: Clip, movies: dict[str, Path]) -> dict[str, list[str]]:
    """Each reads the files that those before it made."""
    width, height = size_in_box(clip)
    scale = f"scale={width}:{height}[v]"
    steady = f"fps={FRAME_RATE},{scale}"
    # The speed is 1, so the times stay as they are.
    once = f"[0:v]{steady};[0:a]anull[a]"
    backward, forward, joined = (movies[name] for name in ("speed backward", "speed forward", "join"))
    return {
        "reverse": reverse_with_filter(clip.path, clip.bit_rate, movies["reverse"]),
        "speed backward": _export([movies["reverse"]], once, REVERSED_SOUND_RATE, str(backward)),
        "speed forward": _export([clip.path], once, clip.sound_rate, str(forward)),
        "join": _export([backward, forward],
                        f"[0:v][0:a][1:v][1:a]concat=n=2:v=1:a=1[both][a];[both]{steady}",
                        clip.sound_rate, "-movflags", "+faststart", str(joined)),
        "metadata": _export([joined, clip.path], f"[0:v]{scale};[0:a]anull[a]", clip.sound_rate,
                            "-map_metadata", "1", str(movies["metadata"])),
    }


def _with_melt(threads: int, movie: Path, clip: Clip) -> list[str]:
    """Of the size and rate that the job gives these clips, and with encoding threads as everywhere else."""
    settings = dict(zip(*[iter([*export_video_encoder(), *sound_encoder(REVERSED_SOUND_RATE)])] * 2))
    renamed = {"-c:v": "vcodec", "-profile:v": "profile", "-c:a": "acodec", "-b:a": "ab", "-ac": "channels"}
    properties = [f"{renamed.get(name, name[1:])}={value}" for name, value in settings.items()]
    return ["env", "QT_QPA_PLATFORM=offscreen", "melt", "-silent", "-profile", f"atsc_{BOX[1]}p_{FRAME_RATE}",
            f"timewarp:-1.0:{clip.path}", "-consumer", f"avformat:{movie}", f"real_time=-{threads}",
            "threads=0", *properties]


def _job_rows(job: Job, clip: Clip, program: Cost, stages: list[Cost]) -> list[Row]:
    on = f"{job.name}, {clip.name}"
    return [
        Row("wall time, anadrome / ffmpeg's stages", on, program.wall / sum(stage.wall for stage in stages),
            at_most(1.0)),
        Row("CPU time, anadrome / ffmpeg's stages", on, program.cpu / sum(stage.cpu for stage in stages)),
        Row("peak memory, anadrome / ffmpeg's largest", on,
            program.peak / max(stage.peak for stage in stages)),
    ]


def _melt_rows(clip: Clip, program: Cost, variants: list[Cost]) -> list[Row]:
    on = f"{BACKWARD.name}, {clip.name}"
    fastest = min(variants, key=lambda cost: cost.wall)
    return [
        Row("wall time, anadrome / melt at its fastest", on, program.wall / fastest.wall, at_most(0.75)),
        Row("CPU time, anadrome / melt at its fastest", on, program.cpu / fastest.cpu),
        Row("peak memory, anadrome / melt at its fastest", on, program.peak / fastest.peak),
    ]


def _measure_stages(clip: Clip, plan: Plan, folder: Path) -> list[Row]:
    jobs = {job: folder / f"anadrome {job.name}.mp4" for job in JOBS}
    stages = {name: folder / f"ffmpeg {name}.mp4" for name in JOBS[-1].stages}
    costs = interleaved(plan.rounds,
                        {path.stem: _with_program(job, clip, path) for job, path in jobs.items()}
                        | {stages[name].stem: command for name, command in _stages(clip, stages).items()})
    rows = []
    for job, path in jobs.items():
        # ffmpeg joins where the first clip's sound ends, which is up to a frame later than its pictures.
        check_frames([path, stages[job.stages[-1]]], tolerance=1)
        rows += _job_rows(job, clip, costs[path.stem], [costs[stages[name].stem] for name in job.stages])
    return rows


def _measure_melt(clip: Clip, plan: Plan, folder: Path) -> list[Row]:
    own = folder / "anadrome.mp4"
    melts = {threads: folder / f"melt in {threads} threads.mp4" for threads in MELT_THREADS}
    costs = interleaved(plan.rounds,
                        {own.stem: _with_program(BACKWARD, clip, own)}
                        | {path.stem: _with_melt(threads, path, clip) for threads, path in melts.items()})
    check_frames([own, *melts.values()])
    return _melt_rows(clip, costs[own.stem], [costs[path.stem] for path in melts.values()])


def measure(plan: Plan, folder: Path) -> list[Row]:
    clips = [made(footage, plan.seconds(10)) for footage in (HD720, HD1080)]
    # melt decodes a group anew for each of its pictures, which takes its time.
    long_groups = made(LONG_GROUPS720, plan.seconds(5))
    return [row for clip in clips for row in _measure_stages(clip, plan, folder)] + \
           [row for clip in (*clips, long_groups) for row in _measure_melt(clip, plan, folder)]

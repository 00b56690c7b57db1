#include "Tests/Support/MovieReader.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"
#include "Tests/Support/MovieFile.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

std::string named(const char* name) {
    return name ? name : "unknown";
}

std::string tagText(std::uint32_t tag) {
    std::string text;
    for (; tag; tag >>= 8)
        text += static_cast<char>(tag & 0xff);
    return text;
}

std::optional<DisplayMatrix> matrixOf(const AVStream& stream) {
    const auto data = libav::sideData(stream, AV_PKT_DATA_DISPLAYMATRIX);
    DisplayMatrix matrix{};
    if (data.size() < sizeof matrix)
        return std::nullopt;
    std::copy_n(reinterpret_cast<const std::int32_t*>(data.data()), matrix.size(), matrix.begin());
    return matrix;
}

VideoFacts headerOfVideo(AVFormatContext& file, AVStream& stream) {
    const AVCodecParameters& coding = *stream.codecpar;
    VideoFacts facts;
    facts.codecTag = tagText(coding.codec_tag);
    facts.width = coding.width;
    facts.height = coding.height;
    facts.pixelFormat = named(av_get_pix_fmt_name(static_cast<AVPixelFormat>(coding.format)));
    facts.primaries = named(av_color_primaries_name(coding.color_primaries));
    facts.transfer = named(av_color_transfer_name(coding.color_trc));
    facts.matrix = named(av_color_space_name(coding.color_space));
    facts.range = named(av_color_range_name(coding.color_range));
    facts.pixelAspect = av_guess_sample_aspect_ratio(&file, &stream, nullptr);
    facts.displayMatrix = matrixOf(stream);
    facts.timeBase = stream.time_base;
    facts.startSeconds = secondsOf(stream.start_time, stream.time_base);
    facts.durationSeconds = secondsOf(stream.duration, stream.time_base);
    facts.frameCount = stream.nb_frames;
    return facts;
}

SoundFacts headerOfSound(const AVStream& stream) {
    const AVCodecParameters& coding = *stream.codecpar;
    SoundFacts facts;
    facts.codecTag = tagText(coding.codec_tag);
    facts.sampleRate = coding.sample_rate;
    facts.channelCount = coding.ch_layout.nb_channels;
    facts.startSeconds = secondsOf(stream.start_time, stream.time_base);
    facts.durationSeconds = secondsOf(stream.duration, stream.time_base);
    return facts;
}

void addPicture(const AVFrame& frame, double seconds, VideoFacts& facts) {
    if (facts.frames.empty())
        facts.corners = cornerColours(frame);
    const LumaPicture luma = lumaOf(frame);
    facts.frames.push_back(
        {frame.best_effort_timestamp, seconds, readFrameNumber(luma), meanLuma(luma, frame)});
}

void addSound(const AVFrame& frame, double seconds, Sound& sound) {
    if (sound.samples.empty()) {
        sound.sampleRate = frame.sample_rate;
        sound.channelCount = frame.ch_layout.nb_channels;
        sound.firstSampleSeconds = seconds;
    }
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const ResamplerPtr converter =
        makeSampleConverter(frame.ch_layout, frame.sample_rate, format, AV_SAMPLE_FMT_FLT);
    const std::size_t before = sound.samples.size();
    sound.samples.resize(before + static_cast<std::size_t>(frame.nb_samples * sound.channelCount));
    auto* out = reinterpret_cast<std::uint8_t*>(sound.samples.data() + before);
    checked(swr_convert(converter.get(), &out, frame.nb_samples,
                        const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples),
            "cannot convert sound");
}

/// Reads the headers, and the frames too if they are wanted.
MovieFacts read(const std::string& path, bool withFrames) {
    const InputFilePtr file = openMovie(path);
    MovieFacts movie;
    movie.metadata = entriesOf(file->metadata);
    for (int index = 0; index < static_cast<int>(file->nb_streams); ++index) {
        AVStream& stream = *file->streams[index];
        if (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
            VideoFacts& video = movie.video.emplace_back(headerOfVideo(*file, stream));
            if (withFrames)
                video.decodeErrors = forEachFrame(path, index, [&](const AVFrame& frame, double seconds) {
                    addPicture(frame, seconds, video);
                });
        } else if (stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            SoundFacts& track = movie.sound.emplace_back(headerOfSound(stream));
            if (withFrames)
                track.decodeErrors = forEachFrame(path, index, [&](const AVFrame& frame, double seconds) {
                    addSound(frame, seconds, track.sound);
                });
        }
    }
    return movie;
}

} // namespace

std::vector<std::optional<int>> VideoFacts::numbers() const {
    std::vector<std::optional<int>> numbers;
    for (const FrameFacts& frame : frames)
        numbers.push_back(frame.number);
    return numbers;
}

std::optional<int> numberShownAt(const VideoFacts& video, std::int64_t time, AVRational unit) {
    std::optional<int> number;
    for (const FrameFacts& frame : video.frames)
        if (av_compare_ts(frame.pts, video.timeBase, time, unit) <= 0)
            number = frame.number;
    return number;
}

std::int64_t durationTicks(const VideoFacts& video) {
    return std::llround(video.durationSeconds / av_q2d(video.timeBase));
}

MovieFacts readMovie(const std::string& path) {
    return read(path, true);
}

MovieFacts readMovieHeaders(const std::string& path) {
    return read(path, false);
}

} // namespace anadrome::testing_support

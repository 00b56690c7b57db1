#include "Tests/Support/MovieReader.h"
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

double secondsOf(std::int64_t ticks, AVRational timeBase) {
    return ticks == AV_NOPTS_VALUE ? 0 : static_cast<double>(ticks) * av_q2d(timeBase);
}

std::optional<DisplayMatrix> matrixOf(const AVStream& stream) {
    std::size_t size = 0;
    const std::uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    DisplayMatrix matrix{};
    if (!data || size < sizeof matrix)
        return std::nullopt;
    std::copy_n(reinterpret_cast<const std::int32_t*>(data), matrix.size(), matrix.begin());
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
    facts.isInterlaced = coding.field_order > AV_FIELD_PROGRESSIVE;
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

/// One stream of an opened movie, and where its facts stand.
struct Track {
    AVStream& stream;
    std::size_t place = 0; ///< among the movie's tracks of its kind
    std::optional<TrackDecoder> decoder = {};
    ResamplerPtr converter = {};

    bool isVideo() const { return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO; }
    bool isSound() const { return stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO; }
    double seconds(const AVFrame& frame) const {
        return secondsOf(frame.best_effort_timestamp, stream.time_base);
    }
};

std::vector<Track> listTracks(AVFormatContext& file, MovieFacts& movie) {
    std::vector<Track> tracks;
    for (unsigned index = 0; index < file.nb_streams; ++index) {
        Track& track = tracks.emplace_back(Track{*file.streams[index]});
        if (track.isVideo()) {
            track.place = movie.video.size();
            movie.video.push_back(headerOfVideo(file, track.stream));
        } else if (track.isSound()) {
            track.place = movie.sound.size();
            movie.sound.push_back(headerOfSound(track.stream));
        } else {
            ++movie.otherTracks;
        }
    }
    movie.metadata = entriesOf(file.metadata);
    return tracks;
}

void addPicture(const AVFrame& frame, const Track& track, VideoFacts& facts) {
    if (facts.frames.empty())
        facts.corners = cornerColours(frame);
    facts.isInterlaced |= frame.interlaced_frame != 0;
    const FrameLuma luma(frame);
    facts.frames.push_back(
        {frame.best_effort_timestamp, track.seconds(frame), readFrameNumber(luma.view()), luma.mean()});
}

void addSound(const AVFrame& frame, Track& track, SoundFacts& facts) {
    Sound& sound = facts.sound;
    if (!track.converter) {
        sound.sampleRate = frame.sample_rate;
        sound.channelCount = frame.ch_layout.nb_channels;
        sound.firstSampleSeconds = track.seconds(frame);
        track.converter = makeSampleConverter(frame.ch_layout, frame.sample_rate,
                                              static_cast<AVSampleFormat>(frame.format), AV_SAMPLE_FMT_FLT);
    }
    const double expected = sound.firstSampleSeconds + sound.seconds();
    facts.worstSlip = std::max(facts.worstSlip, std::abs(track.seconds(frame) - expected));
    const std::size_t before = sound.samples.size();
    sound.samples.resize(before + static_cast<std::size_t>(frame.nb_samples * sound.channelCount));
    auto* out = reinterpret_cast<std::uint8_t*>(sound.samples.data() + before);
    checked(swr_convert(track.converter.get(), &out, frame.nb_samples,
                        const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples),
            "cannot convert sound");
}

/// Takes what a packet completes; null ends the track.
void read(const AVPacket* packet, Track& track, MovieFacts& movie) {
    if (!track.decoder)
        return;
    track.decoder->decode(packet, [&](const AVFrame& frame) {
        if (track.isVideo())
            addPicture(frame, track, movie.video[track.place]);
        else
            addSound(frame, track, movie.sound[track.place]);
    });
    int& errors =
        track.isVideo() ? movie.video[track.place].decodeErrors : movie.sound[track.place].decodeErrors;
    errors = track.decoder->errors();
}

} // namespace

std::vector<std::optional<int>> VideoFacts::numbers() const {
    std::vector<std::optional<int>> numbers;
    numbers.reserve(frames.size());
    for (const FrameFacts& frame : frames)
        numbers.push_back(frame.number);
    return numbers;
}

MovieFacts readMovie(const std::string& path) {
    const InputFilePtr file = openMovie(path);
    MovieFacts movie;
    std::vector<Track> tracks = listTracks(*file, movie);
    for (Track& track : tracks)
        if ((track.isVideo() || track.isSound()) && TrackDecoder::canDecode(track.stream))
            track.decoder.emplace(track.stream);
    const PacketPtr packet = makePacket();
    while (av_read_frame(file.get(), packet.get()) >= 0) {
        if (const auto index = static_cast<std::size_t>(packet->stream_index); index < tracks.size())
            read(packet.get(), tracks[index], movie);
        av_packet_unref(packet.get());
    }
    for (Track& track : tracks)
        read(nullptr, track, movie);
    return movie;
}

MovieFacts readMovieHeaders(const std::string& path) {
    MovieFacts movie;
    listTracks(*openMovie(path), movie);
    return movie;
}

} // namespace anadrome::testing_support

#include "Tests/Support/MovieReader.h"
#include "Tests/Support/MovieFile.h"

#include <algorithm>
#include <cmath>
#include <memory>

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

MovieFacts headerOf(const AVFormatContext& file) {
    MovieFacts facts;
    facts.metadata = entriesOf(file.metadata);
    return facts;
}

/// Something that learns from the packets of one track and in the end knows its facts.
class TrackReader {
public:
    explicit TrackReader(const AVStream& stream) : stream_(stream) {
        if (TrackDecoder::canDecode(stream))
            decoder_.emplace(stream);
    }
    virtual ~TrackReader() = default;

    void read(const AVPacket* packet) {
        if (decoder_)
            decoder_->decode(packet, [this](const AVFrame& frame) { take(frame); });
    }
    virtual void tell(MovieFacts& movie) = 0;

protected:
    virtual void take(const AVFrame& frame) = 0;
    double secondsAt(std::int64_t pts) const { return secondsOf(pts, stream_.time_base); }
    int errors() const { return decoder_ ? decoder_->errors() : 0; }

private:
    const AVStream& stream_;
    std::optional<TrackDecoder> decoder_;
};

class VideoReader : public TrackReader {
public:
    VideoReader(AVFormatContext& file, AVStream& stream)
        : TrackReader(stream), facts_(headerOfVideo(file, stream)) {}

    void tell(MovieFacts& movie) override {
        facts_.decodeErrors = errors();
        movie.video.push_back(std::move(facts_));
    }

protected:
    void take(const AVFrame& frame) override {
        if (facts_.frames.empty())
            facts_.corners = cornerColours(frame);
        facts_.isInterlaced |= frame.interlaced_frame != 0;
        const FrameLuma luma(frame);
        const std::int64_t pts = frame.best_effort_timestamp;
        facts_.frames.push_back({pts, secondsAt(pts), readFrameNumber(luma.view()), luma.mean()});
    }

private:
    VideoFacts facts_;
};

class SoundReader : public TrackReader {
public:
    explicit SoundReader(const AVStream& stream) : TrackReader(stream), facts_(headerOfSound(stream)) {}

    void tell(MovieFacts& movie) override {
        facts_.decodeErrors = errors();
        movie.sound.push_back(std::move(facts_));
    }

protected:
    void take(const AVFrame& frame) override {
        Sound& sound = facts_.sound;
        const double seconds = secondsAt(frame.best_effort_timestamp);
        if (!converter_)
            begin(frame, seconds);
        const double expected = sound.firstSampleSeconds + sound.seconds();
        facts_.worstSlip = std::max(facts_.worstSlip, std::abs(seconds - expected));

        const std::size_t before = sound.samples.size();
        const auto added =
            static_cast<std::size_t>(frame.nb_samples) * static_cast<std::size_t>(sound.channelCount);
        sound.samples.resize(before + added);
        auto* out = reinterpret_cast<std::uint8_t*>(sound.samples.data() + before);
        checked(swr_convert(converter_.get(), &out, frame.nb_samples,
                            const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples),
                "cannot convert sound");
    }

private:
    void begin(const AVFrame& frame, double seconds) {
        Sound& sound = facts_.sound;
        sound.sampleRate = frame.sample_rate;
        sound.channelCount = frame.ch_layout.nb_channels;
        sound.firstSampleSeconds = seconds;
        converter_ = makeSampleConverter(frame.ch_layout, frame.sample_rate,
                                         static_cast<AVSampleFormat>(frame.format), AV_SAMPLE_FMT_FLT);
    }

    SoundFacts facts_;
    ResamplerPtr converter_;
};

using TrackReaders = std::vector<std::unique_ptr<TrackReader>>;

TrackReaders makeReaders(AVFormatContext& file) {
    TrackReaders readers;
    for (unsigned index = 0; index < file.nb_streams; ++index) {
        AVStream& stream = *file.streams[index];
        switch (stream.codecpar->codec_type) {
        case AVMEDIA_TYPE_VIDEO:
            readers.push_back(std::make_unique<VideoReader>(file, stream));
            break;
        case AVMEDIA_TYPE_AUDIO:
            readers.push_back(std::make_unique<SoundReader>(stream));
            break;
        default:
            readers.push_back(nullptr);
        }
    }
    return readers;
}

MovieFacts collect(const AVFormatContext& file, const TrackReaders& readers) {
    MovieFacts movie = headerOf(file);
    for (const auto& reader : readers) {
        if (reader)
            reader->tell(movie);
        else
            ++movie.otherTracks;
    }
    return movie;
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
    const TrackReaders readers = makeReaders(*file);
    const PacketPtr packet = makePacket();
    while (av_read_frame(file.get(), packet.get()) >= 0) {
        const auto index = static_cast<std::size_t>(packet->stream_index);
        if (index < readers.size() && readers[index])
            readers[index]->read(packet.get());
        av_packet_unref(packet.get());
    }
    for (const auto& reader : readers)
        if (reader)
            reader->read(nullptr);
    return collect(*file, readers);
}

MovieFacts readMovieHeaders(const std::string& path) {
    const InputFilePtr file = openMovie(path);
    return collect(*file, makeReaders(*file));
}

} // namespace anadrome::testing_support

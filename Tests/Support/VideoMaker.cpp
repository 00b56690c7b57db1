#include "Tests/Support/TrackMakers.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cstring>

namespace anadrome::testing_support {

namespace {

bool usesFullRange(const ClipOptions& options) {
    return options.fullRange || options.pixelFormat.starts_with("yuvj");
}

bool hasOption(const AVCodec& codec, const char* name) {
    const AVClass* options = codec.priv_class; // the search takes the address of the class for an object
    return options && av_opt_find(&options, name, nullptr, 0, AV_OPT_SEARCH_FAKE_OBJ);
}

void setQuality(AVCodecContext& encoder, const AVCodec& codec, const ClipOptions& options,
                OptionList& extras) {
    constexpr double kUsualCrf = 20;
    constexpr double kUsualScale = 3;
    if (options.bitRate) {
        encoder.bit_rate = *options.bitRate;
    } else if (hasOption(codec, "crf")) {
        extras.set("crf", std::to_string(options.quality.value_or(kUsualCrf)));
    } else if (codec.id != AV_CODEC_ID_PRORES) {
        encoder.flags |= AV_CODEC_FLAG_QSCALE;
        encoder.global_quality = static_cast<int>(FF_QP2LAMBDA * options.quality.value_or(kUsualScale));
    }
}

void setGroups(AVCodecContext& encoder, const AVCodec& codec, const ClipOptions& options,
               OptionList& extras) {
    encoder.gop_size = options.gop;
    encoder.max_b_frames = options.bFrames;
    if (!options.openGop)
        encoder.flags |= AV_CODEC_FLAG_CLOSED_GOP;
    // Key frames only where the options put them.
    const std::string fixed = std::string("scenecut=0:open-gop=") + (options.openGop ? "1" : "0");
    if (!std::strcmp(codec.name, "libx264"))
        extras.set("x264-params", fixed);
    else if (!std::strcmp(codec.name, "libx265"))
        extras.set("x265-params", fixed + ":b-adapt=0:log-level=none");
    else if (hasOption(codec, "sc_threshold"))
        extras.set("sc_threshold", "1000000000");
}

void setColour(AVCodecContext& encoder, const ClipOptions& options) {
    const ColourTags tags = tagsOf(options.colour);
    encoder.color_primaries = tags.primaries;
    encoder.color_trc = tags.transfer;
    encoder.colorspace = tags.matrix;
    encoder.color_range = usesFullRange(options)                     ? AVCOL_RANGE_JPEG
                          : options.colour == ColourPreset::Untagged ? AVCOL_RANGE_UNSPECIFIED
                                                                     : AVCOL_RANGE_MPEG;
}

CodecPtr openEncoder(const AVFormatContext& file, const ClipOptions& options) {
    const AVCodec& codec = encoderNamed(options.videoCodec);
    CodecPtr encoder(checked(avcodec_alloc_context3(&codec), "no memory for an encoder"));
    encoder->width = options.width;
    encoder->height = options.height;
    encoder->pix_fmt = av_get_pix_fmt(options.pixelFormat.c_str());
    encoder->time_base = timeBaseOf(options);
    encoder->framerate = av_d2q(options.frames / videoSeconds(options), 1 << 24);
    encoder->sample_aspect_ratio = options.pixelAspect;
    encoder->thread_count = 0;
    encoder->strict_std_compliance = FF_COMPLIANCE_UNOFFICIAL;
    if (file.oformat->flags & AVFMT_GLOBALHEADER)
        encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (options.interlaced) {
        encoder->flags |= AV_CODEC_FLAG_INTERLACED_DCT | AV_CODEC_FLAG_INTERLACED_ME;
        encoder->field_order = AV_FIELD_TT;
    }
    setColour(*encoder, options);
    OptionList extras;
    if (hasOption(codec, "preset"))
        extras.set("preset", options.preset);
    setQuality(*encoder, codec, options, extras);
    setGroups(*encoder, codec, options, extras);
    checked(avcodec_open2(encoder.get(), &codec, extras.address()),
            options.videoCodec + " cannot encode " + std::to_string(options.width) + "x" +
                std::to_string(options.height) + " " + options.pixelFormat);
    return encoder;
}

} // namespace

VideoMaker::VideoMaker(AVFormatContext& file, const ClipOptions& options)
    : options_(options), track_(file, openEncoder(file, options), options.startSeconds),
      drawn_(makePicture(options.width, options.height, track_.encoder().pix_fmt)),
      picture_(options, track_.encoder().pix_fmt, usesFullRange(options)) {
    const AVCodecContext& encoder = track_.encoder();
    AVStream& stream = track_.stream();
    stream.avg_frame_rate = encoder.framerate;
    stream.sample_aspect_ratio = options.pixelAspect;
    if (options.orientation != Orientation::Upright) {
        const DisplayMatrix matrix = displayMatrix(options.orientation, options.width, options.height);
        std::uint8_t* copy = checked(libav::newSideData(stream, AV_PKT_DATA_DISPLAYMATRIX, sizeof matrix),
                                     "no memory for a matrix");
        std::memcpy(copy, matrix.data(), sizeof matrix);
    }
}

std::optional<double> VideoMaker::nextSeconds() const {
    if (number_ == options_.frames)
        return std::nullopt;
    return options_.startSeconds + static_cast<double>(position_) * av_q2d(track_.encoder().time_base);
}

void VideoMaker::makeNext() {
    AVFrame& frame = *drawn_;
    // The encoder may still hold the last picture.
    checked(av_frame_make_writable(&frame), "no memory for a picture");
    picture_.draw(frame, options_.countsDown ? options_.frames - 1 - number_ : number_);
    const AVCodecContext& encoder = track_.encoder();
    frame.color_primaries = encoder.color_primaries;
    frame.color_trc = encoder.color_trc;
    frame.colorspace = encoder.colorspace;
    frame.color_range = encoder.color_range;
    frame.sample_aspect_ratio = encoder.sample_aspect_ratio;
    if (options_.interlaced)
        libav::setInterlaced(frame);
    frame.quality = encoder.global_quality;
    frame.pts = position_;
    const std::int64_t duration = durationOf(options_, number_);
    libav::setDuration(frame, duration);
    track_.encode(&frame);
    position_ += duration;
    ++number_;
}

} // namespace anadrome::testing_support

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <cstdint>
#include <span>

/// Every difference between the versions of FFmpeg that the project builds with, 5.1 and later. Each function
/// works alike on all of them. They hold no rules of the project, so the tests use them too.
namespace anadrome::libav {

/// In the time base of the frame's stream; 0 when unknown.
inline std::int64_t durationOf(const AVFrame& frame) {
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(57, 30, 100) // 6.0
    return frame.duration;
#else
    return frame.pkt_duration;
#endif
}

inline void setDuration(AVFrame& frame, std::int64_t duration) {
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(57, 30, 100) // 6.0
    frame.duration = duration;
#else
    frame.pkt_duration = duration;
#endif
}

inline bool isInterlaced(const AVFrame& frame) {
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 7, 100) // 6.1
    return (frame.flags & AV_FRAME_FLAG_INTERLACED) != 0;
#else
    return frame.interlaced_frame != 0;
#endif
}

/// Marks a frame as two fields, the top one first.
inline void setInterlaced(AVFrame& frame) {
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 7, 100) // 6.1
    frame.flags |= AV_FRAME_FLAG_INTERLACED | AV_FRAME_FLAG_TOP_FIELD_FIRST;
#else
    frame.interlaced_frame = 1;
    frame.top_field_first = 1;
#endif
}

/// Side data that holds for a whole stream. Owned by the stream; empty when there is none.
inline std::span<const std::uint8_t> sideData(const AVStream& stream, AVPacketSideDataType type) {
#if LIBAVFORMAT_VERSION_INT >= AV_VERSION_INT(60, 15, 100) // 6.1
    const AVCodecParameters& parameters = *stream.codecpar;
    const AVPacketSideData* found =
        av_packet_side_data_get(parameters.coded_side_data, parameters.nb_coded_side_data, type);
    return found ? std::span<const std::uint8_t>(found->data, found->size) : std::span<const std::uint8_t>();
#else
    std::size_t size = 0;
    const std::uint8_t* data = av_stream_get_side_data(&stream, type, &size);
    return data ? std::span(data, size) : std::span<const std::uint8_t>();
#endif
}

/// Adds side data to a stream, to be filled in. Owned by the stream; null when memory has run out.
inline std::uint8_t* newSideData(AVStream& stream, AVPacketSideDataType type, std::size_t size) {
#if LIBAVFORMAT_VERSION_INT >= AV_VERSION_INT(60, 15, 100) // 6.1
    AVCodecParameters& parameters = *stream.codecpar;
    const AVPacketSideData* made =
        av_packet_side_data_new(&parameters.coded_side_data, &parameters.nb_coded_side_data, type, size, 0);
    return made ? made->data : nullptr;
#else
    return av_stream_new_side_data(&stream, type, size);
#endif
}

/// The first sample format that an encoder lists; fallback when it lists none.
inline AVSampleFormat firstSampleFormat(const AVCodec& encoder, AVSampleFormat fallback) {
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(61, 13, 100) // 7.1
    const void* formats = nullptr;
    const int result =
        avcodec_get_supported_config(nullptr, &encoder, AV_CODEC_CONFIG_SAMPLE_FORMAT, 0, &formats, nullptr);
    return result >= 0 && formats ? *static_cast<const AVSampleFormat*>(formats) : fallback;
#else
    return encoder.sample_fmts ? encoder.sample_fmts[0] : fallback;
#endif
}

} // namespace anadrome::libav

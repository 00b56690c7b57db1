#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>

/// Every libav object has an owner that frees it. Private to the media floor.
namespace anadrome::libav {

struct Free {
    void operator()(AVFormatContext* input) const { avformat_close_input(&input); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
    void operator()(SwrContext* resampler) const { swr_free(&resampler); }
    void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};

template <typename T>
using Owned = std::unique_ptr<T, Free>;

/// For the allocation functions, which return null only when memory has run out.
template <typename T>
Owned<T> own(T* object) {
    if (!object)
        throw std::bad_alloc();
    return Owned<T>(object);
}

inline Owned<AVFrame> makeFrame() {
    return own(av_frame_alloc());
}

inline Owned<AVPacket> makePacket() {
    return own(av_packet_alloc());
}

} // namespace anadrome::libav

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <map>
#include <memory>
#include <stdexcept>
#include <string>

/// Owners for the C library's objects, and its error codes as exceptions.
namespace anadrome::testing_support {

struct LibavDeleter {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
    void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};

using FramePtr = std::unique_ptr<AVFrame, LibavDeleter>;
using PacketPtr = std::unique_ptr<AVPacket, LibavDeleter>;
using CodecPtr = std::unique_ptr<AVCodecContext, LibavDeleter>;
using ScalerPtr = std::unique_ptr<SwsContext, LibavDeleter>;
using ResamplerPtr = std::unique_ptr<SwrContext, LibavDeleter>;

struct InputFileDeleter {
    void operator()(AVFormatContext* file) const { avformat_close_input(&file); }
};
using InputFilePtr = std::unique_ptr<AVFormatContext, InputFileDeleter>;

struct OutputFileDeleter {
    void operator()(AVFormatContext* file) const {
        avio_closep(&file->pb);
        avformat_free_context(file);
    }
};
using OutputFilePtr = std::unique_ptr<AVFormatContext, OutputFileDeleter>;

/// A dictionary of options or of metadata, freed with its owner.
class OptionList {
public:
    OptionList() = default;
    OptionList(const OptionList&) = delete;
    OptionList& operator=(const OptionList&) = delete;
    ~OptionList() { av_dict_free(&entries_); }

    void set(const std::string& key, const std::string& value) {
        av_dict_set(&entries_, key.c_str(), value.c_str(), 0);
    }
    AVDictionary** address() { return &entries_; }

private:
    AVDictionary* entries_ = nullptr;
};

inline std::map<std::string, std::string> entriesOf(const AVDictionary* dictionary) {
    std::map<std::string, std::string> entries;
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(dictionary, "", entry, AV_DICT_IGNORE_SUFFIX)))
        entries.emplace(entry->key, entry->value);
    return entries;
}

/// Hands a result on, or throws when it is an error code.
inline int checked(int result, const std::string& what) {
    if (result >= 0)
        return result;
    char reason[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(result, reason, sizeof reason);
    throw std::runtime_error(what + ": " + reason);
}

template <class T>
T* checked(T* object, const std::string& what) {
    if (!object)
        throw std::runtime_error(what);
    return object;
}

inline FramePtr makeFrame() {
    return FramePtr(checked(av_frame_alloc(), "no memory for a frame"));
}
inline PacketPtr makePacket() {
    return PacketPtr(checked(av_packet_alloc(), "no memory for a packet"));
}

inline FramePtr makePicture(int width, int height, AVPixelFormat format) {
    FramePtr frame = makeFrame();
    frame->width = width;
    frame->height = height;
    frame->format = format;
    checked(av_frame_get_buffer(frame.get(), 0), "no memory for a picture");
    return frame;
}

/// Changes how samples are stored, not their rate or channels.
inline ResamplerPtr makeSampleConverter(const AVChannelLayout& channels, int rate, AVSampleFormat from,
                                        AVSampleFormat to) {
    SwrContext* made = nullptr;
    auto* layout = const_cast<AVChannelLayout*>(&channels); // only read, though not declared so
    const int result = swr_alloc_set_opts2(&made, layout, to, rate, layout, from, rate, 0, nullptr);
    ResamplerPtr converter(made);
    checked(result, "cannot convert sound");
    checked(swr_init(converter.get()), "cannot convert sound");
    return converter;
}

} // namespace anadrome::testing_support

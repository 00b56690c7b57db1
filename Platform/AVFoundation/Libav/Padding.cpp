#include "Platform/AVFoundation/Libav/Padding.h"

#include "Platform/AVFoundation/Libav/Errors.h"

#include <algorithm>
#include <cstring>

extern "C" {
#include <libavcodec/bsf.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace anadrome::libav {

namespace {

/// A plane with the bytes of one sample.
struct Plane {
    std::uint8_t* data;
    int stride;
    int width;
    int height;
    std::size_t sampleBytes;

    std::uint8_t* at(int x, int y) const {
        return data + std::ptrdiff_t{y} * stride + x * static_cast<std::ptrdiff_t>(sampleBytes);
    }
};

Plane planeOf(const AVFrame& frame, int index) {
    const AVPixFmtDescriptor& format = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const bool isChroma = index > 0;
    return {frame.data[index], frame.linesize[index],
            AV_CEIL_RSHIFT(frame.width, isChroma ? format.log2_chroma_w : 0),
            AV_CEIL_RSHIFT(frame.height, isChroma ? format.log2_chroma_h : 0),
            format.comp[0].depth > 8 ? std::size_t{2} : std::size_t{1}};
}

void fill(const Plane& to, const Plane& from) {
    for (int y = 0; y < to.height; ++y)
        for (int x = 0; x < to.width; ++x)
            std::memcpy(to.at(x, y), from.at(std::min(x, from.width - 1), std::min(y, from.height - 1)),
                        to.sampleBytes);
}

struct FreeFilter {
    void operator()(AVBSFContext* filter) const { av_bsf_free(&filter); }
};

} // namespace

Owned<AVFrame> paddedTo(int width, int height, const AVFrame& picture) {
    Owned<AVFrame> padded = makeFrame();
    av_frame_copy_props(padded.get(), &picture);
    padded->width = width;
    padded->height = height;
    padded->format = picture.format;
    if (av_frame_get_buffer(padded.get(), 0) < 0)
        throw std::bad_alloc();
    for (int plane = 0; plane < 3; ++plane)
        fill(planeOf(*padded, plane), planeOf(picture, plane));
    return padded;
}

Result<Owned<AVCodecParameters>> cropped(const AVCodecParameters& coded, const char* filter, int width,
                                         int height) {
    AVBSFContext* made = nullptr;
    int result = av_bsf_alloc(av_bsf_get_by_name(filter), &made);
    const std::unique_ptr<AVBSFContext, FreeFilter> context(made);
    if (result >= 0)
        result = avcodec_parameters_copy(context->par_in, &coded);
    if (result >= 0)
        result = av_opt_set_int(context->priv_data, "crop_right", coded.width - width, 0);
    if (result >= 0)
        result = av_opt_set_int(context->priv_data, "crop_bottom", coded.height - height, 0);
    // What is made from the settings stands in the codec's own description, which the filter changes at once.
    if (result >= 0)
        result = av_bsf_init(context.get());
    Owned<AVCodecParameters> parameters = own(avcodec_parameters_alloc());
    if (result >= 0)
        result = avcodec_parameters_copy(parameters.get(), context->par_out);
    if (result < 0)
        return errorFrom(result, AVErrorUnknown);
    parameters->width = width;
    parameters->height = height;
    return parameters;
}

} // namespace anadrome::libav

#include "Platform/AVFoundation/Libav/PictureConverter.h"

#include "Platform/AVFoundation/Libav/Errors.h"

#include <string>

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/pixdesc.h>
}

namespace anadrome::libav {

namespace {

std::string number(int value) {
    return std::to_string(value);
}

std::string colorOptions(const ColorTags& source, const ColorTags& target) {
    if (target == ColorTags{})
        return {};
    // The filter counts in the same code points as the tags.
    return ":primariesin=" + number(source.primaries) + ":primaries=" + number(target.primaries) +
           ":transferin=" + number(source.transfer) + ":transfer=" + number(target.transfer) +
           ":matrixin=" + number(source.matrix) + ":matrix=" + number(target.matrix);
}

} // namespace

Result<std::unique_ptr<PictureConverter>> PictureConverter::make(const PictureForm& source,
                                                                 const PictureForm& target) {
    std::unique_ptr<PictureConverter> converter(new PictureConverter(source));
    if (std::optional<NSError> error = converter->build(target))
        return *error;
    return converter;
}

std::optional<NSError> PictureConverter::build(const PictureForm& target) {
    m_graph = own(avfilter_graph_alloc());
    const std::string source = "video_size=" + number(m_source.width) + "x" + number(m_source.height) +
                               ":pix_fmt=" + number(m_source.format) + ":time_base=1/1:pixel_aspect=1/1";
    int result = avfilter_graph_create_filter(&m_input, avfilter_get_by_name("buffer"), "in", source.c_str(),
                                              nullptr, m_graph.get());
    if (result < 0)
        return errorFrom(result, AVErrorUnknown);
    result = avfilter_graph_create_filter(&m_output, avfilter_get_by_name("buffersink"), "out", nullptr,
                                          nullptr, m_graph.get());
    if (result < 0)
        return errorFrom(result, AVErrorUnknown);

    const std::string chain = "[in]zscale=w=" + number(target.width) + ":h=" + number(target.height) +
                              ":filter=spline36:rangein=limited:range=limited" +
                              colorOptions(m_source.color, target.color) +
                              ",format=" + av_get_pix_fmt_name(target.format) + "[out]";
    AVFilterInOut* outputs = avfilter_inout_alloc();
    AVFilterInOut* inputs = avfilter_inout_alloc();
    *outputs = {av_strdup("in"), m_input, 0, nullptr};
    *inputs = {av_strdup("out"), m_output, 0, nullptr};
    result = avfilter_graph_parse_ptr(m_graph.get(), chain.c_str(), &inputs, &outputs, nullptr);
    avfilter_inout_free(&inputs);
    avfilter_inout_free(&outputs);
    if (result >= 0)
        result = avfilter_graph_config(m_graph.get(), nullptr);
    return result < 0 ? std::optional(errorFrom(result, AVErrorUnknown)) : std::nullopt;
}

Result<AVFrame*> PictureConverter::convert(AVFrame* frame) {
    av_frame_unref(m_result.get());
    int result = av_buffersrc_add_frame_flags(m_input, frame, AV_BUFFERSRC_FLAG_KEEP_REF);
    if (result >= 0)
        result = av_buffersink_get_frame(m_output, m_result.get());
    if (result < 0)
        return errorFrom(result, AVErrorUnknown);
    return m_result.get();
}

} // namespace anadrome::libav

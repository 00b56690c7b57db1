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

/// The brightness, in cd/m², that becomes the white of ordinary video, as ITU-R BT.2408 has it.
constexpr const char* toneMappingWhite = "203";

/// What lies above that white is bent, up to a peak in its multiples: 1,000 cd/m² for HLG, which knows no
/// more, and about 2,000 for PQ, whose content seldom has. docs/decisions/0008-tone-mapping.md tells why.
std::string toneMapping(const ColorTags& source) {
    const bool isHlg = source.transfer == AVCOL_TRC_ARIB_STD_B67;
    return std::string("tonemap=mobius:desat=0:peak=") + (isHlg ? "4.93" : "10");
}

std::string number(int value) {
    return std::to_string(value);
}

std::string sizeOptions(const PictureForm& target) {
    return "zscale=w=" + number(target.width) + ":h=" + number(target.height) +
           ":filter=spline36:rangein=limited:range=limited";
}

// The filter counts in the same code points as the tags.
std::string inputColor(const ColorTags& color) {
    return ":primariesin=" + number(color.primaries) + ":transferin=" + number(color.transfer) +
           ":matrixin=" + number(color.matrix);
}

std::string outputColor(const ColorTags& color) {
    return ":primaries=" + number(color.primaries) + ":transfer=" + number(color.transfer) +
           ":matrix=" + number(color.matrix);
}

std::string formatStep(const PictureForm& target) {
    return std::string(",format=") + av_get_pix_fmt_name(target.format);
}

/// From HDR to ordinary video: scaled as it is coded, which is the least work, then as light, where 1 is the
/// white of ordinary video and highlights go beyond; these are bent down to 1.
std::string toneMappingSteps(const PictureForm& source, const PictureForm& target) {
    const std::string scaled = sizeOptions(target) + inputColor(source.color) + outputColor(source.color);
    return scaled + ",zscale=transfer=linear:npl=" + toneMappingWhite +
           ",format=gbrpf32le,zscale=primaries=" + number(target.color.primaries) + "," +
           toneMapping(source.color) + ",zscale=range=limited" + outputColor(target.color) +
           formatStep(target);
}

std::string steps(const PictureForm& source, const PictureForm& target) {
    if (target.color == ColorTags{})
        return sizeOptions(target) + formatStep(target);
    if (isHdr(source.color) && !isHdr(target.color))
        return toneMappingSteps(source, target);
    return sizeOptions(target) + inputColor(source.color) + outputColor(target.color) + formatStep(target);
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

    const std::string chain = "[in]" + steps(m_source, target) + "[out]";
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
    // A step that has nothing to convert passes its picture on as it is, without the colour it was told, and
    // the next step looks for that in the picture.
    frame->color_primaries = m_source.color.primaries;
    frame->color_trc = m_source.color.transfer;
    frame->colorspace = m_source.color.matrix;
    av_frame_unref(m_result.get());
    int result = av_buffersrc_add_frame_flags(m_input, frame, AV_BUFFERSRC_FLAG_KEEP_REF);
    if (result >= 0)
        result = av_buffersink_get_frame(m_output, m_result.get());
    if (result < 0)
        return errorFrom(result, AVErrorUnknown);
    return m_result.get();
}

} // namespace anadrome::libav

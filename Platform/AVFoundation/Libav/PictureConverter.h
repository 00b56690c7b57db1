#pragma once

#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/Foundation/Result.h"

#include <memory>

namespace anadrome::libav {

/// Size, samples and colour of planar pictures in video range.
struct PictureForm {
    int width = 0;
    int height = 0;
    AVPixelFormat format = AV_PIX_FMT_NONE;
    ColorTags color;

    friend bool operator==(const PictureForm&, const PictureForm&) = default;
};

/// Scales pictures and converts their colour, through the colour library's filter; HDR is tone-mapped where
/// the target is ordinary video. One thread at a time.
class PictureConverter {
public:
    /// Where the target's colour is specified, the source's must be too.
    static Result<std::unique_ptr<PictureConverter>> make(const PictureForm& source,
                                                          const PictureForm& target);

    const PictureForm& source() const { return m_source; }

    /// Gives the frame the source's colour tags. The result belongs to this object and is good until the next
    /// call.
    Result<AVFrame*> convert(AVFrame* frame);

private:
    explicit PictureConverter(const PictureForm& source) : m_source(source), m_result(makeFrame()) {}
    std::optional<NSError> build(const PictureForm& target);

    const PictureForm m_source;
    Owned<AVFilterGraph> m_graph;
    AVFilterContext* m_input = nullptr;
    AVFilterContext* m_output = nullptr;
    Owned<AVFrame> m_result;
};

} // namespace anadrome::libav

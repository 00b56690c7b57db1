#include "Platform/AVFoundation/Render/PictureComposer.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/FramePixels.h"
#include "Platform/AVFoundation/Render/Canvas.h"

#include <algorithm>

namespace anadrome::render {

namespace {

bool sameLayers(std::span<const Layer> a, std::span<const Layer> b) {
    return std::ranges::equal(a, b, [](const Layer& one, const Layer& other) {
        return one.picture.pixels == other.picture.pixels && one.transform == other.transform &&
               one.opacity == other.opacity;
    });
}

libav::ColorTags colorOf(const CVPixelBufferRef& pixels) {
    return libav::filled(
        libav::tagsFromAttachments(CVBufferCopyAttachments(pixels, kCVAttachmentMode_ShouldPropagate)),
        libav::assumedTags(static_cast<int>(CVPixelBufferGetHeight(pixels))));
}

} // namespace

libav::ColorTags movieColorFor(const AVAssetTrack& track) {
    constexpr libav::ColorTags bt709{AVCOL_PRI_BT709, AVCOL_TRC_BT709, AVCOL_SPC_BT709};
    if (track.formatDescriptions().empty())
        return bt709;
    const CMFormatDescription& description = *track.formatDescriptions().front();
    const libav::ColorTags color =
        libav::filled(libav::tagsFromAttachments(description.extensions.value_or(Dictionary{})),
                      libav::assumedTags(description.dimensions.height));
    return libav::isHdr(color) || color.primaries == AVCOL_PRI_BT2020 ? bt709 : color;
}

Result<CVPixelBufferRef> PictureComposer::compose(std::span<const Layer> layers) {
    if (m_lastPicture && sameLayers(layers, m_lastLayers))
        return m_lastPicture;
    m_lastLayers.assign(layers.begin(), layers.end());
    m_lastPicture.reset();
    if (std::optional<NSError> error = drawAll(layers))
        return *error;
    CVBufferSetAttachments(m_lastPicture, libav::attachmentsFor(m_target.color),
                           kCVAttachmentMode_ShouldPropagate);
    return m_lastPicture;
}

std::optional<NSError> PictureComposer::drawAll(std::span<const Layer> layers) {
    std::vector<Placement> placements;
    std::size_t lowestSeen = 0;
    for (const Layer& layer : layers) {
        const std::optional<Placement> placement =
            placementOf(layer.picture.source->naturalSize(), layer.transform, m_target.canvas, m_target.size);
        if (!placement)
            return makeAVError(AVErrorInvalidVideoComposition);
        if (placement->covers(m_target.size) && layer.opacity >= 1)
            lowestSeen = placements.size();
        placements.push_back(*placement);
    }
    for (std::size_t i = lowestSeen; i < layers.size(); ++i)
        if (std::optional<NSError> error = drawOne(layers[i], placements[i]))
            return error;
    if (!m_lastPicture)
        m_lastPicture = makeBlackPicture(m_target.size);
    return m_lastPicture ? std::nullopt : std::optional(makeAVError(AVErrorOutOfMemory));
}

std::optional<NSError> PictureComposer::drawOne(const Layer& layer, const Placement& placement) {
    Result<CVPixelBufferRef> picture = converted(layer.picture, placement.sizeBeforeTurning());
    if (!picture)
        return picture.error();
    if (placement.covers(m_target.size) && !placement.isTurned() && layer.opacity >= 1) {
        m_lastPicture = *picture;
        return std::nullopt;
    }
    // What is there already may belong to a decoder and isn't ours to draw on.
    const CVPixelBufferRef canvas = makeBlackPicture(m_target.size);
    if (!canvas)
        return makeAVError(AVErrorOutOfMemory);
    if (m_lastPicture)
        draw(m_lastPicture, {.size = m_target.size}, 1, canvas);
    draw(*picture, placement, layer.opacity, canvas);
    m_lastPicture = canvas;
    return std::nullopt;
}

Result<CVPixelBufferRef> PictureComposer::converted(const TrackPicture& picture, const PixelSize& size) {
    libav::Owned<AVFrame> frame = libav::frameAround(picture.pixels);
    // A last odd column or row has only half a sample of colour.
    frame->width -= frame->width % 2;
    frame->height -= frame->height % 2;
    const libav::PictureForm form{frame->width, frame->height, static_cast<AVPixelFormat>(frame->format),
                                  colorOf(picture.pixels)};
    const libav::PictureForm target{size.width, size.height, AV_PIX_FMT_YUV420P, m_target.color};
    if (form == target)
        return libav::pixelsAround(std::move(frame));

    Conversion& conversion = m_conversions[picture.source];
    if (!conversion.converter || conversion.converter->source() != form || conversion.size != size) {
        Result<std::unique_ptr<libav::PictureConverter>> made = libav::PictureConverter::make(form, target);
        if (!made)
            return made.error();
        conversion = {std::move(*made), size};
    }
    Result<AVFrame*> result = conversion.converter->convert(frame.get());
    if (!result)
        return result.error();
    return libav::pixelsAround(libav::own(av_frame_clone(*result)));
}

} // namespace anadrome::render

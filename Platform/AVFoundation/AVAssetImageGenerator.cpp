#include "Platform/AVFoundation/AVAssetImageGenerator.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/FrameConverter.h"
#include "Platform/AVFoundation/Libav/ScreenPixels.h"
#include "Platform/AVFoundation/Playback/PictureDecoder.h"
#include "Platform/AVFoundation/Render/PictureComposer.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

namespace {

using render::PixelSize;

/// The picture at the time, or the first one from the tolerance on. Nothing if none can be decoded.
std::optional<playback::DecodedPicture> decodeAt(playback::PictureDecoder& decoder, const CMTime& time,
                                                 const CMTime& tolerance) {
    decoder.seek(time);
    const CMTime limit = CMTimeAdd(time, decoder.rounding());
    std::optional<playback::DecodedPicture> shown;
    while (auto picture = decoder.next()) {
        if (shown && CMTimeCompare(picture->time, limit) > 0)
            break;
        shown = std::move(picture);
        if (CMTimeCompare(CMTimeSubtract(time, shown->time), tolerance) <= 0)
            break;
    }
    return shown;
}

int evenSide(double side) {
    return std::max(2, static_cast<int>(side / 2) * 2);
}

/// Even sides, so that 4:2:0 has whole samples.
PixelSize fittedSize(const CGSize& size, const CGSize& maximum) {
    double scale = 1;
    if (maximum.width > 0 && maximum.height > 0)
        scale = std::min({1.0, maximum.width / size.width, maximum.height / size.height});
    return {evenSide(size.width * scale), evenSide(size.height * scale)};
}

} // namespace

Result<CGImage> AVAssetImageGenerator::copyCGImageAtTime(const CMTime& time) const {
    const auto tracks = m_asset->tracksWithMediaType(AVMediaTypeVideo);
    if (tracks.empty())
        return m_asset->loadError().value_or(makeAVError(AVErrorOperationNotSupportedForAsset));
    const AVAssetTrackRef& track = tracks.front();
    auto decoder = playback::PictureDecoder::open(track);
    if (!decoder)
        return decoder.error();
    const auto picture = decodeAt(**decoder, time, m_toleranceBefore);
    if (!picture)
        return makeAVError(AVErrorDecodeFailed);
    libav::FrameConverter planar(track->formatDescriptions().front(), std::nullopt);
    const CVPixelBufferRef pixels = planar.convert(*picture->frame);
    if (!pixels)
        return makeAVError(AVErrorDecodeFailed);

    const CGAffineTransform transform =
        m_appliesTransform ? track->preferredTransform() : CGAffineTransformIdentity;
    const CGSize turned = CGSizeApplyAffineTransform(track->naturalSize(), transform);
    const CGSize canvas{std::abs(turned.width), std::abs(turned.height)};
    const libav::ColorTags color = render::movieColorFor(*track);
    render::PictureComposer composer({canvas, fittedSize(canvas, m_maximumSize), color});
    const render::Layer layer{{pixels, track}, transform};
    auto composed = composer.compose({&layer, 1});
    if (!composed)
        return composed.error();
    return libav::screenPixels(*composed, color);
}

} // namespace anadrome

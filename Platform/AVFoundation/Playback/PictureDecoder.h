#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/FrameConverter.h"
#include "Platform/Foundation/Result.h"

#include <memory>
#include <optional>

namespace anadrome::playback {

/// A picture as the decoder gave it, not yet in the form in which it is shown.
struct DecodedPicture {
    libav::Owned<AVFrame> frame;
    CMTime time;
};

/// Decodes a file's video track from any place on, and makes pictures of the size in which they are shown.
/// One thread at a time.
class PictureDecoder {
public:
    static Result<std::unique_ptr<PictureDecoder>> open(const AVAssetTrackRef& track);

    /// In pixels, of the pictures that convert() makes from now on.
    void setSize(CMVideoDimensions size);

    /// To the last key frame that isn't shown after the time; next() goes on there. The key frame's time,
    /// which is invalid if there is nothing or the file doesn't tell.
    CMTime seek(const CMTime& time);
    /// In presentation order, with rising times. Nothing at the end and where the file can't be read on.
    std::optional<DecodedPicture> next();

    /// Of 8 bits ('420v') or 10 ('x420'). Null for a picture that can't be converted.
    CVPixelBufferRef convert(const DecodedPicture& picture);

    /// What a converted picture takes.
    std::size_t pictureBytes() const;
    /// From one picture to the next, on average.
    CMTime pictureDuration() const;
    /// Half a tick of the file's clock. Times in a file are rounded to its ticks, so a picture counts as on
    /// screen from this much before its time.
    CMTime rounding() const { return m_rounding; }

private:
    PictureDecoder(AVAssetTrackRef track, libav::Decoder decoder);

    const AVAssetTrackRef m_track;
    libav::Decoder m_decoder;
    const OSType m_pixelFormat;
    const CMTime m_rounding;
    CMVideoDimensions m_size;
    libav::FrameConverter m_converter;
    CMTime m_lastTime = kCMTimeInvalid;
};

} // namespace anadrome::playback

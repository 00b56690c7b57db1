#pragma once

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <functional>
#include <optional>

namespace anadrome::libav {

/// Turns decoded pictures of any pixel format into sample buffers of 4:2:0 samples: video range, the
/// picture's own matrix and size. Those that are so already aren't copied. Colour attachments come from the
/// track's format description. One thread at a time.
class PictureReader {
public:
    using Deliver = std::function<bool(CMSampleBufferRef)>;

    /// Without a pixel format the pictures become planar, of 8 bits or 10 as they come.
    PictureReader(CMFormatDescriptionRef description, std::optional<OSType> pixelFormat);

    /// Delivers the picture. False when the receiver wants no more.
    bool convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver);

private:
    CVPixelBufferRef pixelsOf(const AVFrame& frame);
    CVPixelBufferRef convertedPixels(const AVFrame& frame);
    /// False for a pixel format that can't be converted.
    bool scale(const AVFrame& frame, const CVPixelBufferRef& pixels);
    /// A time behind the last one: containers without usable times get them laid end to end.
    CMTime risingTime(const Decoder& decoder, const AVFrame& frame);

    CMFormatDescriptionRef m_description;
    std::optional<OSType> m_pixelFormat;
    Dictionary m_attachments;
    CMTime m_lastTime = kCMTimeInvalid;

    /// What the scaler was made for; a stream may change halfway.
    struct Source {
        int width = 0;
        int height = 0;
        int format = -1;
        int range = 0;
        int matrix = 0;
        bool byFields = false;
        OSType target = 0;
        friend bool operator==(const Source&, const Source&) = default;
    };
    /// Null for a pixel format that can't be converted.
    static Owned<SwsContext> makeScaler(const Source& source);
    Source m_source;
    Owned<SwsContext> m_scaler;
};

} // namespace anadrome::libav

#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"
#include "Platform/CoreMedia/CMFormatDescription.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <optional>

namespace anadrome::libav {

/// Turns decoded pictures of any pixel format into pixel buffers of 4:2:0 samples: video range, the picture's
/// own matrix. Those that are so already aren't copied. Colour attachments come from the track's format
/// description. One thread at a time.
class FrameConverter {
public:
    /// Without a pixel format the pictures become planar, of 8 bits or 10 as they come; without a size they
    /// keep theirs. Scaled ones are meant for a screen: quick to make, and not for encoding.
    FrameConverter(const CMFormatDescriptionRef& description, std::optional<OSType> pixelFormat,
                   std::optional<CMVideoDimensions> size = std::nullopt);

    /// Null for a picture that can't be converted.
    CVPixelBufferRef convert(const AVFrame& frame);

private:
    CVPixelBufferRef convertedPixels(const AVFrame& frame);
    /// False for a pixel format that can't be converted.
    bool scale(const AVFrame& frame, const CVPixelBufferRef& pixels);

    std::optional<OSType> m_pixelFormat;
    std::optional<CMVideoDimensions> m_size;
    Dictionary m_attachments;

    /// What the scaler was made for; a stream may change halfway.
    struct Task {
        int width = 0;
        int height = 0;
        int format = -1;
        int range = 0;
        int matrix = 0;
        bool byFields = false;
        int targetWidth = 0;
        int targetHeight = 0;
        OSType target = 0;
        bool resizes() const { return targetWidth != width || targetHeight != height; }
        friend bool operator==(const Task&, const Task&) = default;
    };
    /// Null for a pixel format that can't be converted.
    static Owned<SwsContext> makeScaler(const Task& task);
    Task m_task;
    Owned<SwsContext> m_scaler;
};

} // namespace anadrome::libav

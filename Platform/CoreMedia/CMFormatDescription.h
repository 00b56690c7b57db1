#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/Foundation/NSDictionary.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace anadrome {

enum class CMMediaType { video, audio };

/// Big-endian packing of a four-character code: fourCC("420v") is 0x34323076.
constexpr std::uint32_t fourCC(const char (&code)[5]) {
    std::uint32_t packed = 0;
    for (int i = 0; i < 4; ++i)
        packed = packed << 8 | static_cast<unsigned char>(code[i]);
    return packed;
}

/// Shape of linear PCM or of a compressed sound track.
struct AudioStreamBasicDescription {
    double sampleRate = 0;
    /// 'lpcm', 'aac ', …
    std::uint32_t formatID = 0;
    std::uint32_t channelsPerFrame = 0;
    /// 0 for compressed sound.
    std::uint32_t bitsPerChannel = 0;
    /// One sample of every channel; 0 for compressed sound.
    std::uint32_t bytesPerFrame = 0;
    friend bool operator==(const AudioStreamBasicDescription&, const AudioStreamBasicDescription&) = default;
};

/// Stored size in pixels, before pixel aspect and transform.
struct CMVideoDimensions {
    std::int32_t width = 0;
    std::int32_t height = 0;
    friend bool operator==(const CMVideoDimensions&, const CMVideoDimensions&) = default;
};

/// Extension: 24 bytes, big-endian, in the layout of the HEVC mastering display colour volume message.
inline constexpr const char* kCMFormatDescriptionExtension_MasteringDisplayColorVolume =
    "MasteringDisplayColorVolume";
/// Extension: 4 bytes, big-endian: maximum content and maximum frame-average light level, in cd/m².
inline constexpr const char* kCMFormatDescriptionExtension_ContentLightLevelInfo = "ContentLightLevelInfo";

/// What the samples of a track are. Immutable; shared freely between threads.
struct CMFormatDescription {
    CMMediaType mediaType = CMMediaType::video;
    std::uint32_t mediaSubType = 0;
    CMVideoDimensions dimensions;
    AudioStreamBasicDescription audio;
    /// Colour entries under the kCVImageBuffer… keys, and the two above. None if the source tells nothing.
    std::optional<Dictionary> extensions;
    /// Pictures a second in the track that this describes, 0 if unknown. Lets an encoder that gets this as a
    /// hint divide its bits over the frames.
    double frameRateHint = 0;
};

using CMFormatDescriptionRef = std::shared_ptr<const CMFormatDescription>;

const std::optional<Dictionary>& CMFormatDescriptionGetExtensions(const CMFormatDescriptionRef& description);

} // namespace anadrome

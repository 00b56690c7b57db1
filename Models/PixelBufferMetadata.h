#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace anadrome {

/// What it takes to rebuild a pixel buffer around its plane bytes. Its JSON form has the field names as keys
/// and leaves out what has no value.
struct PixelBufferMetadata {
    struct PlaneInfo {
        std::int64_t bytesPerRow = 0;
        std::int64_t height = 0;
        friend bool operator==(const PlaneInfo&, const PlaneInfo&) = default;
    };

    std::int64_t width = 0;
    std::int64_t height = 0;
    std::uint32_t pixelFormat = 0;
    std::int64_t bytesPerRow = 0;
    /// 0 for a buffer that isn't planar.
    std::int64_t planeCount = 0;
    /// Always the same text as colorPrimaries; not read when loading.
    std::optional<std::string> colorSpace;
    std::optional<std::string> yCbCrMatrix;
    std::optional<std::string> colorPrimaries;
    std::optional<std::string> transferFunction;
    std::optional<std::string> chromaLocationTopField;
    std::optional<std::string> chromaLocationBottomField;
    std::vector<PlaneInfo> planeInfos;

    std::string encoded() const;
    /// Empty if the text is no JSON, lacks a required key or holds a value of another type.
    static std::optional<PixelBufferMetadata> decoded(std::string_view json);

    friend bool operator==(const PixelBufferMetadata&, const PixelBufferMetadata&) = default;
};

} // namespace anadrome

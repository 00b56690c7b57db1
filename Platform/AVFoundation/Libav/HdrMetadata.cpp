#include "Platform/AVFoundation/Libav/HdrMetadata.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"
#include "Platform/CoreMedia/CMFormatDescription.h"

#include <array>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/intreadwrite.h>
#include <libavutil/mastering_display_metadata.h>
}

namespace anadrome::libav {

namespace {

// ITU-T H.265, D.3.28: chromaticities in units of 0.00002, luminances in units of 0.0001 cd/m², green first.
constexpr int chromaticityUnits = 50000;
constexpr int luminanceUnits = 10000;
constexpr int planeOrder[] = {1, 2, 0};

std::uint32_t inUnits(AVRational value, int units) {
    return static_cast<std::uint32_t>(av_rescale(value.num, units, value.den));
}

NSData masteringBytes(const AVMasteringDisplayMetadata& display) {
    NSData bytes(24);
    auto* out = reinterpret_cast<std::uint8_t*>(bytes.data());
    for (const int plane : planeOrder)
        for (const AVRational& coordinate : display.display_primaries[plane]) {
            AV_WB16(out, inUnits(coordinate, chromaticityUnits));
            out += 2;
        }
    for (const AVRational& coordinate : display.white_point) {
        AV_WB16(out, inUnits(coordinate, chromaticityUnits));
        out += 2;
    }
    AV_WB32(out, inUnits(display.max_luminance, luminanceUnits));
    AV_WB32(out + 4, inUnits(display.min_luminance, luminanceUnits));
    return bytes;
}

NSData lightLevelBytes(const AVContentLightMetadata& levels) {
    NSData bytes(4);
    auto* out = reinterpret_cast<std::uint8_t*>(bytes.data());
    AV_WB16(out, levels.MaxCLL);
    AV_WB16(out + 2, levels.MaxFALL);
    return bytes;
}

const NSData* dataOfSize(const Dictionary& extensions, const char* key, std::size_t size) {
    const Value* value = find(extensions, key);
    const NSData* data = value ? value->asData() : nullptr;
    return data && data->size() == size ? data : nullptr;
}

std::string pair(const char* name, unsigned first, unsigned second) {
    return std::string(name) + "(" + std::to_string(first) + "," + std::to_string(second) + ")";
}

} // namespace

Dictionary hdrExtensions(const AVStream* stream) {
    Dictionary extensions;
    if (const auto data = sideData(*stream, AV_PKT_DATA_MASTERING_DISPLAY_METADATA); !data.empty()) {
        const auto& display = *reinterpret_cast<const AVMasteringDisplayMetadata*>(data.data());
        if (display.has_primaries && display.has_luminance)
            extensions.emplace(kCMFormatDescriptionExtension_MasteringDisplayColorVolume,
                               masteringBytes(display));
    }
    if (const auto data = sideData(*stream, AV_PKT_DATA_CONTENT_LIGHT_LEVEL); !data.empty())
        extensions.emplace(kCMFormatDescriptionExtension_ContentLightLevelInfo,
                           lightLevelBytes(*reinterpret_cast<const AVContentLightMetadata*>(data.data())));
    return extensions;
}

std::string hdrEncoderOptions(const Dictionary& extensions) {
    std::string options;
    if (const NSData* data =
            dataOfSize(extensions, kCMFormatDescriptionExtension_MasteringDisplayColorVolume, 24)) {
        const auto* in = reinterpret_cast<const std::uint8_t*>(data->data());
        options += ":master-display=";
        for (const char* name : {"G", "B", "R", "WP"}) {
            options += pair(name, AV_RB16(in), AV_RB16(in + 2));
            in += 4;
        }
        options += pair("L", AV_RB32(in), AV_RB32(in + 4));
    }
    if (const NSData* data = dataOfSize(extensions, kCMFormatDescriptionExtension_ContentLightLevelInfo, 4)) {
        const auto* in = reinterpret_cast<const std::uint8_t*>(data->data());
        options += ":max-cll=" + std::to_string(AV_RB16(in)) + "," + std::to_string(AV_RB16(in + 2));
    }
    return options;
}

} // namespace anadrome::libav

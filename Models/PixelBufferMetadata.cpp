#include "Models/PixelBufferMetadata.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace anadrome {

namespace {

using Json = nlohmann::json;

void encodeIfPresent(Json& json, const char* key, const std::optional<std::string>& value) {
    if (value)
        json[key] = *value;
}

std::optional<std::string> decodeIfPresent(const Json& json, const char* key) {
    const auto entry = json.find(key);
    if (entry == json.end() || entry->is_null())
        return std::nullopt;
    return entry->get<std::string>();
}

template <typename Integer>
Integer decodeInteger(const Json& json, const char* key) {
    const Json& value = json.at(key);
    if (!value.is_number_integer() || !std::in_range<Integer>(value.get<std::int64_t>()))
        throw Json::type_error::create(302, "no integer of this size", &value);
    return value.get<Integer>();
}

} // namespace

std::string PixelBufferMetadata::encoded() const {
    Json json{{"width", width},
              {"height", height},
              {"pixelFormat", pixelFormat},
              {"bytesPerRow", bytesPerRow},
              {"planeCount", planeCount}};
    encodeIfPresent(json, "colorSpace", colorSpace);
    encodeIfPresent(json, "yCbCrMatrix", yCbCrMatrix);
    encodeIfPresent(json, "colorPrimaries", colorPrimaries);
    encodeIfPresent(json, "transferFunction", transferFunction);
    encodeIfPresent(json, "chromaLocationTopField", chromaLocationTopField);
    encodeIfPresent(json, "chromaLocationBottomField", chromaLocationBottomField);
    json["planeInfos"] = Json::array();
    for (const PlaneInfo& plane : planeInfos)
        json["planeInfos"].push_back({{"bytesPerRow", plane.bytesPerRow}, {"height", plane.height}});
    return json.dump();
}

std::optional<PixelBufferMetadata> PixelBufferMetadata::decoded(std::string_view text) {
    try {
        const Json json = Json::parse(text);
        PixelBufferMetadata metadata;
        metadata.width = decodeInteger<std::int64_t>(json, "width");
        metadata.height = decodeInteger<std::int64_t>(json, "height");
        metadata.pixelFormat = decodeInteger<std::uint32_t>(json, "pixelFormat");
        metadata.bytesPerRow = decodeInteger<std::int64_t>(json, "bytesPerRow");
        metadata.planeCount = decodeInteger<std::int64_t>(json, "planeCount");
        metadata.colorSpace = decodeIfPresent(json, "colorSpace");
        metadata.yCbCrMatrix = decodeIfPresent(json, "yCbCrMatrix");
        metadata.colorPrimaries = decodeIfPresent(json, "colorPrimaries");
        metadata.transferFunction = decodeIfPresent(json, "transferFunction");
        metadata.chromaLocationTopField = decodeIfPresent(json, "chromaLocationTopField");
        metadata.chromaLocationBottomField = decodeIfPresent(json, "chromaLocationBottomField");
        for (const Json& plane : json.at("planeInfos"))
            metadata.planeInfos.push_back({decodeInteger<std::int64_t>(plane, "bytesPerRow"),
                                           decodeInteger<std::int64_t>(plane, "height")});
        return metadata;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

} // namespace anadrome

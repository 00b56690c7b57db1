#include "Platform/AVFoundation/Render/ExportPreset.h"

#include "Platform/AVFoundation/AVExportPresets.h"

#include <algorithm>
#include <cmath>

namespace anadrome::render {

namespace {

constexpr struct {
    const char* name;
    PixelSize box;
} presets[] = {
    {AVAssetExportPreset640x480, {640, 480}},
    {AVAssetExportPreset1280x720, {1280, 720}},
    {AVAssetExportPreset1920x1080, {1920, 1080}},
};

/// One sample of colour.
constexpr int smallestSide = 2;

int evenSide(double side, double largest) {
    const int nearest = 2 * static_cast<int>(std::lround(side / 2));
    // A canvas in square pixels may end in part of one, which counts as whole wherever it is stored.
    return std::max(smallestSide, nearest > std::round(largest) ? nearest - 2 : nearest);
}

} // namespace

std::optional<PixelSize> presetBox(const std::string& presetName) {
    for (const auto& preset : presets)
        if (presetName == preset.name)
            return preset.box;
    return std::nullopt;
}

PixelSize fittedSize(CGSize canvas, const PixelSize& box) {
    const bool isUpright = canvas.height > canvas.width;
    const double width = isUpright ? box.height : box.width;
    const double height = isUpright ? box.width : box.height;
    const double scale = std::min({1.0, width / canvas.width, height / canvas.height});
    return {evenSide(canvas.width * scale, canvas.width), evenSide(canvas.height * scale, canvas.height)};
}

} // namespace anadrome::render

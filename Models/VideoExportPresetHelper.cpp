#include "Models/VideoExportPresetHelper.h"

#include "Platform/AVFoundation/AVExportPresets.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

std::string VideoExportPresetHelper::presetName(std::int64_t index) {
    switch (index) {
    case 0:
        return AVAssetExportPreset640x480;
    case 1:
        return AVAssetExportPreset1280x720;
    case 2:
        return AVAssetExportPreset1920x1080;
    default:
        fatalError("unexpected preset index");
    }
}

} // namespace anadrome

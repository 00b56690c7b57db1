#pragma once

#include <cstdint>
#include <string>

namespace anadrome {

/// The quality that exports have.
class VideoExportPresetHelper {
public:
    /// The preset for an index of the quality setting: 0 low, 1 medium, 2 high. Others are fatal.
    static std::string presetName(std::int64_t index);
};

} // namespace anadrome

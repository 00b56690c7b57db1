#include "Tests/Support/ClipOptions.h"

namespace anadrome::testing_support {

AVRational timeBaseOf(const ClipOptions& options) {
    return options.frameTicks.empty() ? av_inv_q(options.frameRate) : AVRational{1, 600};
}

std::int64_t durationOf(const ClipOptions& options, int frame) {
    const auto& pattern = options.frameTicks;
    return pattern.empty() ? 1 : pattern[static_cast<std::size_t>(frame) % pattern.size()];
}

double videoSeconds(const ClipOptions& options) {
    std::int64_t ticks = 0;
    for (int frame = 0; frame < options.frames; ++frame)
        ticks += durationOf(options, frame);
    return static_cast<double>(ticks) * av_q2d(timeBaseOf(options));
}

ColourTags tagsOf(ColourPreset preset) {
    switch (preset) {
    case ColourPreset::Bt709:
        return {AVCOL_PRI_BT709, AVCOL_TRC_BT709, AVCOL_SPC_BT709};
    case ColourPreset::Bt601:
        return {AVCOL_PRI_SMPTE170M, AVCOL_TRC_SMPTE170M, AVCOL_SPC_SMPTE170M};
    case ColourPreset::Hlg:
        return {AVCOL_PRI_BT2020, AVCOL_TRC_ARIB_STD_B67, AVCOL_SPC_BT2020_NCL};
    case ColourPreset::Pq:
        return {AVCOL_PRI_BT2020, AVCOL_TRC_SMPTE2084, AVCOL_SPC_BT2020_NCL};
    case ColourPreset::Untagged:
        break;
    }
    return {};
}

} // namespace anadrome::testing_support

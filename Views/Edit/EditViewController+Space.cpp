// The check before a job: whether the disk can hold the clip's raw frames.

#include "Models/FrameStoreSpace.h"
#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/Foundation/NSBundle.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"

#include <cmath>
#include <cstdio>

namespace anadrome {

namespace {

enum class Rounding { up, down };

/// In megabytes, or from a gigabyte on in tenths of one. What is needed is rounded up and what is free down,
/// so that the two never look the same.
std::string sizeText(std::int64_t bytes, Rounding rounding) {
    constexpr double megabyte = 1e6;
    constexpr double gigabyte = 1e9;
    const auto round = [&](double value) {
        return rounding == Rounding::up ? std::ceil(value) : std::floor(value);
    };
    const auto size = static_cast<double>(bytes);
    char text[32];
    if (size < gigabyte)
        std::snprintf(text, sizeof text, "%.0f MB", round(size / megabyte));
    else
        std::snprintf(text, sizeof text, "%.1f GB", round(size / gigabyte * 10) / 10);
    return text;
}

std::string refusalText(const FrameStoreSpace& space) {
    if (space.free && *space.free < space.needed)
        return NSLocalizedString("NotEnoughRoomForFrames", {sizeText(space.needed, Rounding::up),
                                                            sizeText(*space.free, Rounding::down)});
    return NSLocalizedString("FramesCannotBeKept", {NSError::posix(space.fileError).localizedDescription()});
}

} // namespace

bool EditViewController::hasRoomForFrames() {
    const auto tracks = AVAsset::assetWithURL(*m_inputUrl)->tracksWithMediaType(AVMediaTypeVideo);
    // A clip that can't be read is the engine's to judge.
    if (tracks.empty())
        return true;
    const FrameStoreSpace space = FrameStoreSpace::measure(*tracks.front());
    if (!space.suffices())
        ViewHelper::showError(self(), refusalText(space));
    return space.suffices();
}

} // namespace anadrome

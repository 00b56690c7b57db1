#pragma once

#include "Platform/Foundation/URL.h"

#include <QString>
#include <optional>

namespace anadrome::desktop {

/// What is shown of a clip before it is opened.
struct Thumbnail {
    /// A picture file; empty if there is none.
    QString picture{};
    std::optional<double> seconds{};
    /// The clip can't be decoded.
    bool isBroken = false;
};

/// The clip's thumbnail that some program made, or else one made now, from a third of the way in. Blocks for
/// as long as that takes. Any thread; one at a time for a clip.
Thumbnail loadThumbnail(const URL& clip);

} // namespace anadrome::desktop

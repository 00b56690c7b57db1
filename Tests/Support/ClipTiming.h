#pragma once

#include "Tests/Support/ClipOptions.h"

#include <cstdint>

namespace anadrome::testing_support {

/// The unit in which a clip's frames are timed: a whole frame where all last the same.
AVRational timeBaseOf(const ClipOptions& options);

/// How long a frame is shown, in that unit.
std::int64_t durationOf(const ClipOptions& options, int frame);

AVRational averageRate(const ClipOptions& options);

/// How long the pictures of the clip last altogether.
double videoSeconds(const ClipOptions& options);

} // namespace anadrome::testing_support

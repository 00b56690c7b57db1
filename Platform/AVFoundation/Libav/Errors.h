#pragma once

#include "Platform/AVFoundation/AVError.h"

namespace anadrome::libav {

/// The error for a negative return value of a libav function. A full disk, missing memory and damaged data
/// have codes of their own; all else gets the fallback. The library's text and the system's error number lie
/// underneath.
NSError errorFrom(int returnValue, AVErrorCode fallback);

} // namespace anadrome::libav

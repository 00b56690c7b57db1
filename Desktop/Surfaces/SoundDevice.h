#pragma once

#include "Platform/AVFoundation/SoundSink.h"

#include <memory>

namespace anadrome {

/// A SoundSinkFactory: the desktop's sound device as it is chosen at the time. Null if there is none, or it
/// can't be opened. Asking the sound server takes some milliseconds.
std::unique_ptr<SoundSink> openSoundDevice();

} // namespace anadrome

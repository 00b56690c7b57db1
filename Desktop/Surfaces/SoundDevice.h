#pragma once

#include "Platform/AVFoundation/SoundSink.h"

#include <memory>

namespace anadrome {

/// A SoundSinkFactory: the desktop's sound device as it is chosen at the time. Null if there is none, or it
/// can't be opened. Asking the sound server takes some milliseconds. A stretch shorter than what the server
/// wants before it begins, a tenth of a second or two, isn't heard.
std::unique_ptr<SoundSink> openSoundDevice();

} // namespace anadrome

#pragma once

#include <string>

namespace anadrome::testing_support {

/// Overwrites the codec tag of the first sound track of a finished mov or mp4 file with "xq4z", which names
/// no codec, and hides the codec's own description, so that no reader can decode the track.
void makeFirstSoundUnknown(const std::string& path);

} // namespace anadrome::testing_support

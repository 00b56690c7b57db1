#pragma once

#include <string>
#include <vector>

namespace anadrome::testing_support {

/// The names of a movie's outermost boxes, in the file's order.
std::vector<std::string> outermostBoxes(const std::string& path);

/// Overwrites the codec tag of the first sound track of a finished mov or mp4 file with "xq4z", which names
/// no codec, and hides the codec's own description, so that no reader can decode the track.
void makeFirstSoundUnknown(const std::string& path);

/// Adds one text to the user data of a movie whose index stands last, as phones do. The name is the three
/// letters behind the copyright sign, the language has three letters too.
void addUserData(const std::string& path, const std::string& name, const std::string& text,
                 const std::string& language = "und");

} // namespace anadrome::testing_support

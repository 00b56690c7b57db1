#pragma once

#include <optional>
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

/// A stretch of a track's timeline, as an editor writes it that cuts without encoding.
struct MovieEdit {
    double seconds = 0;
    /// Where in the media it begins, counted from the first picture or sample; nothing for an empty edit.
    std::optional<double> mediaSeconds = {};
    double rate = 1;
};

/// Gives the first track of pictures of a mov or mp4 file these edits instead of its own. The index must
/// stand last, or the file must be fragmented.
void setEdits(const std::string& path, const std::vector<MovieEdit>& edits);

} // namespace anadrome::testing_support

#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/Foundation/Result.h"

#include <iosfwd>
#include <string>

namespace anadrome {

/// Directions of the movie's stretches, in order of play. The values are the segments of the Edit screen's
/// control.
enum class OutputType { reversed = 0, reversedThenForward = 1, forwardThenReversed = 2 };

/// Whether the movie keeps the clip's place, date and camera.
enum class ClipMetadata { drop, keep };

/// Everything that decides a movie but the clip itself and the quality, a preference that is read at each
/// export. A value, valid from the start.
class MovieRecipe {
public:
    struct Choices {
        OutputType outputType = OutputType::reversed;
        /// Speeds of the stretches: multiples of 0.1 from 0.1 to 10. The forward one plays no part when the
        /// movie is reversed only.
        double reverseSpeed = 1;
        double normalSpeed = 1;
        AVFileType fileType = AVFileTypeQuickTimeMovie;
        ClipMetadata metadata = ClipMetadata::drop;
    };
    /// Returns an error that names the first choice out of range.
    static Result<MovieRecipe> make(const Choices& choices);

    /// The reversed clip in its own size, times and bit rate, as HEVC: the reverse stage and nothing else.
    static MovieRecipe reversalOnly(AVFileType fileType);

    /// Returns why a speed is none that make() takes; empty if it is one.
    static std::string complaintAboutSpeed(double speed);

    OutputType outputType() const { return m_choices.outputType; }
    double reverseSpeed() const { return m_choices.reverseSpeed; }
    double normalSpeed() const { return m_choices.normalSpeed; }
    AVFileType fileType() const { return m_choices.fileType; }
    bool keepsMetadata() const { return m_choices.metadata == ClipMetadata::keep; }
    bool isReversalOnly() const { return m_isReversalOnly; }

private:
    MovieRecipe(const Choices& choices, bool isReversalOnly)
        : m_choices(choices), m_isReversalOnly(isReversalOnly) {}

    Choices m_choices;
    bool m_isReversalOnly;
};

/// One line, for logs and test failures: "reversed 2.0x, then forward 0.5x; .mov; keeps metadata".
std::ostream& operator<<(std::ostream& stream, const MovieRecipe& recipe);

/// The extension of a container's files, with the dot.
std::string fileExtension(AVFileType fileType);

} // namespace anadrome

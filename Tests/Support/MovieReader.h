#pragma once

#include "Tests/Support/Orientation.h"
#include "Tests/Support/PictureReading.h"
#include "Tests/Support/SoundMeasure.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace anadrome::testing_support {

struct FrameFacts {
    std::int64_t pts = 0; ///< in units of the track's time base
    double seconds = 0;
    std::optional<int> number = {}; ///< read from the picture
    double meanLuma = 0;            ///< on the 8-bit scale where black is 16 and white is 235
};

/// A video track as it is stored: nothing is turned or scaled.
struct VideoFacts {
    std::string codecTag = {};
    int width = 0;
    int height = 0;
    std::string pixelFormat = {};
    std::string primaries =
        {}; ///< colour names as the command line tools print them, "unknown" without a tag
    std::string transfer = {};
    std::string matrix = {};
    std::string range = {};
    AVRational pixelAspect = {0, 1};
    std::optional<DisplayMatrix> displayMatrix = {};
    AVRational timeBase = {0, 1};
    double startSeconds = 0;
    double durationSeconds = 0;
    std::int64_t frameCount = 0; ///< as the container says; the real one is frames.size()
    CornerColours corners = {};  ///< of the first frame
    int decodeErrors = 0;
    std::vector<FrameFacts> frames = {}; ///< in the order of presentation

    std::vector<std::optional<int>> numbers() const;
};

struct SoundFacts {
    std::string codecTag = {};
    int sampleRate = 0;
    int channelCount = 0;
    double startSeconds = 0;
    double durationSeconds = 0;
    int decodeErrors = 0;
    Sound sound = {}; ///< what is heard: padding that the file says to drop is left out
};

struct MovieFacts {
    std::map<std::string, std::string> metadata = {};
    std::vector<VideoFacts> video = {};
    std::vector<SoundFacts> sound = {};
};

/// The number that a track shows at a time, by the exact times of its frames: that of the last frame that
/// doesn't come later.
std::optional<int> numberShownAt(const VideoFacts& video, std::int64_t time, AVRational unit);

/// The length of the track in its own time base.
std::int64_t durationTicks(const VideoFacts& video);

/// Reads a whole movie: facts from its headers, and facts from every decoded frame. Pictures are dropped once
/// they have been looked at. Throws std::runtime_error when the file is not a movie.
MovieFacts readMovie(const std::string& path);

/// The same without decoding anything: no frames and no samples.
MovieFacts readMovieHeaders(const std::string& path);

} // namespace anadrome::testing_support

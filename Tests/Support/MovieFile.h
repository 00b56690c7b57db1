#pragma once

#include "Tests/Support/Libav.h"

#include <functional>
#include <string>

namespace anadrome::testing_support {

/// Opens a movie and looks into its tracks. Throws std::runtime_error when it cannot.
InputFilePtr openMovie(const std::string& path);

double secondsOf(std::int64_t ticks, AVRational timeBase);

/// Calls take(frame, its time in seconds) for every frame of a track, in the order of presentation. Tells how
/// many times the decoder found the data broken; a track that nothing decodes has no frames.
int forEachFrame(const std::string& path, int track, const std::function<void(const AVFrame&, double)>& take);

/// The same for the first video track.
void forEachVideoFrame(const std::string& path, const std::function<void(const AVFrame&, double)>& take);

} // namespace anadrome::testing_support

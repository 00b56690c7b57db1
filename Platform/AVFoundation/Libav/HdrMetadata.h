#pragma once

#include "Platform/Foundation/NSDictionary.h"

#include <string>

struct AVStream;

namespace anadrome::libav {

/// The mastering display and the light levels that a container tells of a stream, as format description
/// extensions; empty if it tells none.
Dictionary hdrExtensions(const AVStream* stream);

/// The same extensions as options of the HEVC encoder, each preceded by ":"; empty without them.
std::string hdrEncoderOptions(const Dictionary& extensions);

} // namespace anadrome::libav

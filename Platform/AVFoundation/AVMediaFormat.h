#pragma once

#include "Platform/CoreMedia/CMFormatDescription.h"

namespace anadrome {

using AVMediaType = CMMediaType;
inline constexpr AVMediaType AVMediaTypeVideo = CMMediaType::video;
inline constexpr AVMediaType AVMediaTypeAudio = CMMediaType::audio;

/// The containers that can be written.
enum class AVFileType { quickTimeMovie, mpeg4 };
inline constexpr AVFileType AVFileTypeQuickTimeMovie = AVFileType::quickTimeMovie;
inline constexpr AVFileType AVFileTypeMPEG4 = AVFileType::mpeg4;

} // namespace anadrome

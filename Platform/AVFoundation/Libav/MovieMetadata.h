#pragma once

#include "Platform/AVFoundation/AVMetadataItem.h"
#include "Platform/AVFoundation/Libav/Owners.h"

#include <vector>

namespace anadrome::libav {

/// What a file says of its content, every key once. User data and music tags come under the QuickTime key of
/// the same meaning, unless the file has that key itself; those without such a key aren't listed. Nor is what
/// describes the coding (brands, encoders), chapters, and text that isn't UTF-8. A text that the file has in
/// several languages is listed once in each, the file's own choice first.
std::vector<AVMetadataItem> metadataOf(const AVFormatContext& file);

/// Prepares a movie for the items before its header is written. Left out is what the file can't hold: a
/// second text for a key, keys that aren't reverse domain names, text that isn't UTF-8, texts of more than 64
/// KiB and what goes beyond 1 MiB in all, dates before 1904 or after 2040.
void attachMetadata(const std::vector<AVMetadataItem>& items, AVFormatContext& movie);

/// To be called when the header is written: the creation date stands in it now, and isn't to be written once
/// more as a key.
void settleMetadata(AVFormatContext& movie);

} // namespace anadrome::libav

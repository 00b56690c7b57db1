#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"

namespace anadrome::libav {

/// Rate, channels and samples of sound. The layout is not owned.
struct SoundForm {
    AVChannelLayout layout;
    AVSampleFormat format;
    int rate;
};

/// The usual layout of this many channels.
AVChannelLayout usualLayout(int channels);

/// A converter between two forms, ready to use. Only the ratio of the two rates matters. One channel goes to
/// both sides of two as it is, where the library's own mix would take 3 dB off. Null for forms that can't be
/// converted.
Owned<SwrContext> makeResampler(SoundForm from, SoundForm to);

} // namespace anadrome::libav

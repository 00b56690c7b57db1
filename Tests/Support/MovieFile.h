#pragma once

#include "Tests/Support/Libav.h"

#include <functional>
#include <string>

namespace anadrome::testing_support {

/// Opens a movie and looks into its tracks. Throws std::runtime_error when it cannot.
InputFilePtr openMovie(const std::string& path);

/// Decodes the packets of one track.
class TrackDecoder {
public:
    using FrameTaker = std::function<void(const AVFrame&)>;

    static bool canDecode(const AVStream& stream);

    explicit TrackDecoder(const AVStream& stream);

    /// Hands on the frames that a packet completes; null asks for those still held back.
    void decode(const AVPacket* packet, const FrameTaker& take);

    /// How many times the decoder found the data broken.
    int errors() const { return errors_; }

private:
    CodecPtr decoder_;
    FramePtr frame_ = makeFrame();
    int errors_ = 0;
};

/// Calls take(frame, presentation time in seconds) for every frame of the
/// first video track, in presentation order.
void forEachVideoFrame(const std::string& path, const std::function<void(const AVFrame&, double)>& take);

} // namespace anadrome::testing_support

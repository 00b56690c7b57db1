#pragma once

#include "Tests/Support/Libav.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace anadrome::testing_support {

const AVCodec& encoderNamed(const std::string& name);

/// An opened encoder and the track of the file that its packets go to.
class EncodedTrack {
public:
    EncodedTrack(AVFormatContext& file, CodecPtr encoder, double startSeconds);

    const AVCodecContext& encoder() const { return *encoder_; }
    AVStream& stream() const { return stream_; }

    /// Encodes a frame, which tells its duration, and writes what the encoder has ready; null ends the track.
    void encode(const AVFrame* frame);

private:
    void write(AVPacket& packet);

    AVFormatContext& file_;
    CodecPtr encoder_;
    AVStream& stream_;
    double startSeconds_;
    PacketPtr packet_ = makePacket();
    std::unordered_map<std::int64_t, std::int64_t>
        durations_; ///< by presentation time, for encoders that drop them
};

} // namespace anadrome::testing_support

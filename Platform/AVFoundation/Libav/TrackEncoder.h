#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"
#include "Platform/Foundation/Result.h"

#include <functional>
#include <optional>

namespace anadrome::libav {

/// A picture with its time and, if known, its duration, or a run of sound.
struct EncoderInput {
    CVPixelBufferRef pixels;
    CMTime time = kCMTimeInvalid;
    CMTime duration = kCMTimeInvalid;
    CMSampleBufferRef sound;
};

/// Takes the packets that an encoder gives, with times in the encoder's time base. Returns what went wrong,
/// if anything did.
using PacketSink = std::function<std::optional<NSError>(AVPacket&)>;

/// Turns the samples of one track into packets. The encoder itself is opened at the first sample, whose
/// timescale becomes the track's. One thread at a time.
class TrackEncoder {
public:
    virtual ~TrackEncoder() = default;

    /// Opens the encoder for a track that starts with this sample in a session that starts at this time.
    virtual std::optional<NSError> open(const EncoderInput& first, const CMTime& sessionStart) = 0;
    virtual std::optional<NSError> encode(const EncoderInput& input, const PacketSink& sink) = 0;
    /// Gives out what the encoder still holds. Nothing can be encoded after that.
    virtual std::optional<NSError> finish(const PacketSink& sink) = 0;

    /// The open encoder; null before open().
    virtual const AVCodecContext* context() const = 0;
    /// What its packets are, for a container.
    virtual Result<Owned<AVCodecParameters>> parameters() const;
};

/// Sends a frame, or null for the end, and hands on every packet that is ready.
std::optional<NSError> encodeFrame(AVCodecContext* context, const AVFrame* frame, AVPacket* packet,
                                   const PacketSink& sink);

} // namespace anadrome::libav

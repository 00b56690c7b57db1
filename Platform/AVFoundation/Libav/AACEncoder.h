#pragma once

#include "Platform/AVFoundation/Libav/TrackEncoder.h"
#include "Platform/Foundation/NSDictionary.h"

namespace anadrome::libav {

/// Encodes 16-bit PCM of any rate and channels as AAC of the set rate and channels. Sound without times is
/// laid end to end from the session's start; sound with times is put there, with silence in the gaps.
class AACEncoder final : public TrackEncoder {
public:
    explicit AACEncoder(Dictionary settings) : m_settings(std::move(settings)), m_packet(makePacket()) {}

    std::optional<NSError> open(const EncoderInput& first, const CMTime& sessionStart) override;
    std::optional<NSError> encode(const EncoderInput& input, const PacketSink& sink) override;
    std::optional<NSError> finish(const PacketSink& sink) override;
    const AVCodecContext* context() const override { return m_context.get(); }

private:
    std::optional<NSError> prepareResampler(const AudioStreamBasicDescription& format);
    /// Samples, at the output's rate, from the session's start to all that was taken in.
    std::int64_t inputEnd() const;
    std::optional<NSError> fillGapUpTo(const CMTime& time);
    std::optional<NSError> resample(const std::uint8_t* const* data, int count);
    std::optional<NSError> encodeWholeFrames(const PacketSink& sink);
    std::optional<NSError> encodeFrameOf(int samples, const PacketSink& sink);

    const Dictionary m_settings;
    Owned<AVCodecContext> m_context;
    Owned<AVPacket> m_packet;
    CMTime m_start = kCMTimeInvalid;

    AudioStreamBasicDescription m_inputFormat;
    Owned<SwrContext> m_resampler;
    /// Converted sound that doesn't fill a frame yet.
    Owned<AVAudioFifo> m_waiting;
    /// Samples encoded so far.
    std::int64_t m_encoded = 0;
};

} // namespace anadrome::libav

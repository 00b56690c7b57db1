#pragma once

#include "Platform/AVFoundation/Libav/EncoderPictures.h"
#include "Platform/AVFoundation/Libav/TrackEncoder.h"
#include "Platform/Foundation/NSDictionary.h"

#include <memory>
#include <string>
#include <vector>

namespace anadrome::libav {

/// Encodes pictures as HEVC, Main or Main 10, at an average bit rate, through libx265.
class HEVCEncoder final : public TrackEncoder {
public:
    /// The settings of a video writer input, and the format of the source if known.
    HEVCEncoder(Dictionary settings, CMFormatDescriptionRef sourceFormat)
        : m_settings(std::move(settings)), m_sourceFormat(std::move(sourceFormat)), m_packet(makePacket()) {}

    std::optional<NSError> open(const EncoderInput& first, const CMTime& sessionStart) override;
    std::optional<NSError> encode(const EncoderInput& input, const PacketSink& sink) override;
    std::optional<NSError> finish(const PacketSink& sink) override;
    const AVCodecContext* context() const override { return m_context.get(); }

private:
    PictureForm targetForm() const;
    double frameRate() const;
    std::string encoderOptions(const CVPixelBufferRef& first) const;
    PacketSink withDurations(const PacketSink& sink) const;

    const Dictionary m_settings;
    const CMFormatDescriptionRef m_sourceFormat;
    std::unique_ptr<EncoderPictures> m_pictures;
    Owned<AVCodecContext> m_context;
    Owned<AVPacket> m_packet;
    /// The times of all pictures so far, in the encoder's time base. Rising.
    std::vector<std::int64_t> m_times;
};

} // namespace anadrome::libav

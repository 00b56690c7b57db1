#pragma once

#include "Platform/AVFoundation/Libav/EncoderPictures.h"
#include "Platform/AVFoundation/Libav/TrackEncoder.h"
#include "Platform/Foundation/NSDictionary.h"

#include <memory>
#include <vector>

namespace anadrome::libav {

/// What the encoders of pictures have in common: the settings of a video writer input, conversion to what
/// the encoder takes, times and durations. A picture that is too small for the encoder is encoded at the
/// smallest size, its last column and row repeated, and described as what it is.
class PictureEncoder : public TrackEncoder {
public:
    std::optional<NSError> open(const EncoderInput& first, const CMTime& sessionStart) override;
    std::optional<NSError> encode(const EncoderInput& input, const PacketSink& sink) override;
    std::optional<NSError> finish(const PacketSink& sink) override;
    const AVCodecContext* context() const override { return m_context.get(); }
    Result<Owned<AVCodecParameters>> parameters() const override;

protected:
    /// The settings of a video writer input, and the format of the source if known.
    PictureEncoder(Dictionary settings, CMFormatDescriptionRef sourceFormat)
        : m_settings(std::move(settings)), m_sourceFormat(std::move(sourceFormat)), m_packet(makePacket()) {}

    virtual const char* codecName() const = 0;
    virtual AVPixelFormat pixelFormat() const = 0;
    /// The smallest width and height that it encodes. Even.
    virtual int smallestSide() const = 0;
    /// The filter of the codec's bitstream that sets what is cut off.
    virtual const char* croppingFilter() const = 0;
    /// Sets what the codec has of its own, before it is opened.
    virtual void configure(AVCodecContext& context) const = 0;

    PictureForm targetForm() const;
    const Dictionary& compressionProperties() const;
    /// Empty if the settings ask for none.
    std::optional<std::int64_t> bitRate() const;
    const CMFormatDescriptionRef& sourceFormat() const { return m_sourceFormat; }

private:
    bool isPadded() const;
    double frameRate() const;
    PacketSink withDurations(const PacketSink& sink) const;
    std::int64_t toTicks(const CMTime& time) const;
    std::int64_t durationAt(std::int64_t pts) const;

    const Dictionary m_settings;
    const CMFormatDescriptionRef m_sourceFormat;
    std::unique_ptr<EncoderPictures> m_pictures;
    Owned<AVCodecContext> m_context;
    Owned<AVPacket> m_packet;
    /// The times of all pictures so far, in the encoder's time base. Rising.
    std::vector<std::int64_t> m_times;
    /// The own duration of the last of them; empty if it has none.
    std::optional<std::int64_t> m_lastDuration;
};

} // namespace anadrome::libav

#include "Platform/AVFoundation/Libav/PcmBuffers.h"

#include "Platform/AVFoundation/AVAudioSettings.h"

#include <cstring>

namespace anadrome::libav {

CMFormatDescriptionRef describePcm(int sampleRate, int channels) {
    CMFormatDescription description;
    description.mediaType = CMMediaType::audio;
    description.mediaSubType = kAudioFormatLinearPCM;
    description.audio = {static_cast<double>(sampleRate), kAudioFormatLinearPCM,
                         static_cast<std::uint32_t>(channels), 16, static_cast<std::uint32_t>(channels) * 2};
    return std::make_shared<const CMFormatDescription>(description);
}

CMSampleBufferRef makePcmBuffer(const CMFormatDescriptionRef& description,
                                std::span<const std::int16_t> samples, const CMTime& time) {
    auto block = std::make_shared<CMBlockBuffer>(samples.size_bytes());
    std::memcpy(block->bytes().data(), samples.data(), samples.size_bytes());
    const auto rate = static_cast<std::int32_t>(description->audio.sampleRate);
    const CMSampleTimingInfo timing{CMTimeMake(1, rate), time, kCMTimeInvalid};
    const std::size_t sampleSize = description->audio.bytesPerFrame;
    const auto count = static_cast<std::int64_t>(samples.size_bytes() / sampleSize);
    CMSampleBufferRef sample;
    CMSampleBufferCreate(std::move(block), description, count, {&timing, 1}, {&sampleSize, 1}, &sample);
    return sample;
}

} // namespace anadrome::libav

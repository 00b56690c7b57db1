#include "Platform/AVFoundation/Render/SoundTrack.h"

#include <algorithm>

namespace anadrome::render {

std::int64_t SoundTrack::segmentEnd() const {
    const CMTime end = CMTimeRangeGetEnd(m_segments[m_index].timeMapping.target);
    return CMTimeConvertScale(end, m_sampleRate, CMTimeRoundingMethod::Default).value;
}

std::optional<NSError> SoundTrack::addNext(std::span<float> samples) {
    while (!samples.empty() && m_index < m_segments.size()) {
        const std::int64_t left = segmentEnd() - m_position;
        if (left <= 0) {
            m_open.reset();
            ++m_index;
            continue;
        }
        const auto count = static_cast<std::size_t>(
            std::min<std::int64_t>(left, static_cast<std::int64_t>(samples.size() / 2)));
        const AVAssetTrackSegment& segment = m_segments[m_index];
        if (!segment.isEmpty()) {
            if (!m_open)
                m_open = std::make_unique<SegmentSound>(segment, m_sampleRate);
            if (std::optional<NSError> error = m_open->addNext(samples.first(2 * count)))
                return error;
        }
        m_position += static_cast<std::int64_t>(count);
        samples = samples.subspan(2 * count);
    }
    return std::nullopt;
}

} // namespace anadrome::render

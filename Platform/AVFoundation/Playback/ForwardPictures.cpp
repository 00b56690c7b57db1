#include "Platform/AVFoundation/Playback/ForwardPictures.h"

#include <utility>

namespace anadrome::playback {

CMTime ForwardPictures::dueOf(const DecodedPicture& picture) const {
    const CMTime appears = CMTimeSubtract(picture.time, m_decoder.rounding());
    return CMTimeMaximum(CMTimeSubtract(appears, m_position), kCMTimeZero);
}

bool ForwardPictures::work(const CMTime& distance) {
    if (m_ready || isAtEnd())
        return false;
    if (!std::exchange(m_isPlaced, true))
        m_decoder.seek(m_position);
    std::optional<DecodedPicture> next = m_decoder.next();
    if (!next) {
        m_isDrained = true;
        release();
        return true;
    }
    const bool isCurrentOver = CMTimeCompare(dueOf(*next), distance) <= 0;
    if (!isCurrentOver)
        release();
    m_current = std::move(next);
    return true;
}

void ForwardPictures::release() {
    if (!m_current)
        return;
    if (CVPixelBufferRef pixels = m_decoder.convert(*m_current)) {
        const CMTime due = std::exchange(m_isFirst, false) ? kCMTimeZero : dueOf(*m_current);
        m_ready = TimedPicture{std::move(pixels), m_current->time, due};
    }
    m_current.reset();
}

std::optional<TimedPicture> ForwardPictures::take(const CMTime&) {
    return std::exchange(m_ready, std::nullopt);
}

} // namespace anadrome::playback

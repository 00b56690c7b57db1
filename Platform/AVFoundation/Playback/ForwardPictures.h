#pragma once

#include "Platform/AVFoundation/Playback/PictureDecoder.h"
#include "Platform/AVFoundation/Playback/PictureSource.h"

namespace anadrome::playback {

/// Pictures as they are decoded. One is held back until the next is known, because only that one's time tells
/// how long it stays.
class ForwardPictures final : public PictureSource {
public:
    ForwardPictures(PictureDecoder& decoder, const CMTime& position)
        : m_decoder(decoder), m_position(position) {}

    bool work(const CMTime& distance) override;
    std::optional<TimedPicture> take(const CMTime& distance) override;
    bool isAtEnd() const override { return m_isDrained && !m_current && !m_ready; }
    std::size_t cachedBytes() const override { return m_ready ? m_decoder.pictureBytes() : 0; }

private:
    CMTime dueOf(const DecodedPicture& picture) const;
    /// Makes the held-back picture the next to be handed out.
    void release();

    PictureDecoder& m_decoder;
    const CMTime m_position;
    bool m_isPlaced = false;
    /// Whether none has been made yet. Before the track's first picture that one is shown, at once.
    bool m_isFirst = true;
    bool m_isDrained = false;
    std::optional<DecodedPicture> m_current;
    std::optional<TimedPicture> m_ready;
};

} // namespace anadrome::playback

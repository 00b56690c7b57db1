#pragma once

#include "Platform/AVFoundation/Playback/PictureDecoder.h"
#include "Platform/AVFoundation/Playback/PictureSource.h"

#include <deque>

namespace anadrome::playback {

/// Pictures from last to first. Decoding goes forwards only, so they come in runs: from a key frame up to the
/// run before, decoded once and handed out from the back. Of a run that doesn't fit into its half of the
/// bytes only the last pictures are kept, and the stretch before them is decoded anew for the next run. While
/// one run is handed out, the other half of the bytes takes the next. Where play is faster than that, a run
/// keeps fewer pictures of a longer stretch: so many that it lasts until the next is decoded.
class BackwardPictures final : public PictureSource {
public:
    BackwardPictures(PictureDecoder& decoder, const CMTime& position, std::size_t mostBytes);

    bool work(const CMTime& distance) override;
    std::optional<TimedPicture> take(const CMTime& distance) override;
    bool isAtEnd() const override;
    std::size_t cachedBytes() const override { return m_shown.bytes + m_next.bytes; }

private:
    /// In rising time.
    struct Run {
        std::deque<TimedPicture> pictures;
        std::size_t bytes = 0;
    };
    enum class Stage { idle, decoding, complete, ended };

    void begin(const CMTime& distance);
    /// Keeps the pending picture if it was on screen at a wanted time before this one follows it.
    void pend(DecodedPicture picture);
    void keep(const DecodedPicture& picture);
    void complete(const CMTime& distance);
    void setDues();
    static void dropOne(Run& run, bool first);

    PictureDecoder& m_decoder;
    const CMTime m_position;
    const std::size_t m_runBytes;
    Run m_shown;

    // The run that is being decoded, or is waiting for its turn.
    Run m_next;
    Stage m_stage = Stage::idle;
    /// What comes before this time is still to be handed out.
    CMTime m_limit;
    CMTime m_keyTime;
    /// The next time of which the picture is kept, and the distance to the one after it. With no distance,
    /// all from there on are.
    CMTime m_wanted;
    CMTime m_step;
    CMTime m_begunAt;
    double m_begunLength = 0;
    /// How far play came while the last run was decoded, for each second of the decoded stretch.
    double m_pace = 0;
    /// The last picture that was decoded: how long it stays on screen isn't known yet.
    std::optional<DecodedPicture> m_pending;
};

} // namespace anadrome::playback

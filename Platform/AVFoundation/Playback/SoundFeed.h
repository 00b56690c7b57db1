#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Render/SegmentSound.h"
#include "Platform/Dispatch/DispatchQueue.h"

#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace anadrome::playback {

/// Keeps the next half second of a track's sound ready, from a position up to an end, decoding on a serial
/// queue of its own. Where the track has no sound, or can't be read on, there is silence.
class SoundFeed : public std::enable_shared_from_this<SoundFeed> {
public:
    /// Begins at once. stop() must be called in the end.
    static std::shared_ptr<SoundFeed> start(AVAssetTrackRef track, const CMTimeRange& range, int sampleRate);
    SoundFeed(const SoundFeed&) = delete;
    SoundFeed& operator=(const SoundFeed&) = delete;

    /// Makes the decoding end soon and doesn't wait for it.
    void stop();

    /// The next stretch, left and right by turns. Empty when none is ready, and at the end.
    std::vector<float> take();

private:
    SoundFeed(AVAssetTrackRef track, const CMTimeRange& range, int sampleRate);

    void schedule();
    void fill();
    bool wantsMore() const { return !m_isStopped && m_framesLeft > 0 && m_ready.size() < m_blocksAhead; }
    void decode(std::vector<float>& block);

    const DispatchQueue m_queue;
    const std::size_t m_blockFrames;
    const std::size_t m_blocksAhead;

    std::mutex m_mutex;
    std::deque<std::vector<float>> m_ready;
    /// Those that aren't decoded yet.
    std::int64_t m_framesLeft;
    bool m_isStopped = false;
    bool m_isScheduled = false;

    /// Of the queue's blocks. Null after a failure.
    std::unique_ptr<render::SegmentSound> m_sound;
};

} // namespace anadrome::playback

#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Playback/PictureSource.h"
#include "Platform/CoreMedia/CMFormatDescription.h"
#include "Platform/Dispatch/DispatchQueue.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace anadrome::playback {

/// Where pictures are wanted from, and how large.
struct FeedStart {
    CMTime position;
    Direction direction = Direction::forwards;
    CMVideoDimensions size;
};

/// Keeps the next few pictures of a track ready, decoding on a serial queue of its own. A start makes stale
/// what an earlier one began: its pictures are dropped by their generation. An idle feed holds no thread, and
/// a stopped one neither file nor decoder. Made and used on the main thread.
class PictureFeed : public std::enable_shared_from_this<PictureFeed> {
public:
    /// `wake` is called on the main queue when a picture comes that take() or a start has been waiting for,
    /// and when it turns out that none will come.
    PictureFeed(AVAssetTrackRef track, std::function<void()> wake);
    ~PictureFeed();
    PictureFeed(const PictureFeed&) = delete;
    PictureFeed& operator=(const PictureFeed&) = delete;

    void start(const FeedStart& start);
    void stop();

    /// The picture that has come on screen since the last call, if it is ready, play having gone this far
    /// from the start. Those that passed meanwhile are dropped.
    std::optional<TimedPicture> take(const CMTime& distance);

    /// Whether no picture will come any more.
    bool isExhausted() const;

private:
    struct Wish {
        int generation = 0;
        bool isStopped = true;
        FeedStart start;
        CMTime distance = kCMTimeZero;
    };

    void schedule();
    void run();
    /// What run() does between two looks at the wish. False when there is nothing to do.
    bool runOnce(const Wish& wish);
    void follow(const Wish& wish);
    void release();
    bool deliver(int generation, TimedPicture picture);
    void wakeIfAwaited();

    const AVAssetTrackRef m_track;
    const std::function<void()> m_wake;
    const DispatchQueue m_queue;

    mutable std::mutex m_mutex;
    Wish m_wish;
    bool m_isScheduled = false;
    bool m_isAwaited = false;
    bool m_isExhausted = false;
    std::deque<TimedPicture> m_ready;

    // Of the queue's blocks.
    int m_generation = 0;
    std::unique_ptr<PictureDecoder> m_decoder;
    std::unique_ptr<PictureSource> m_source;
};

} // namespace anadrome::playback

#pragma once

#include "Desktop/Library/LoadThumbnail.h"

#include <functional>
#include <list>
#include <stop_token>

namespace anadrome::desktop {

/// Loads thumbnails in the background, a few at a time: those first that were asked for last, since they are
/// on the screen. Main thread only.
class ThumbnailQueue {
public:
    /// Called on the main thread, not after the queue's end.
    using Completion = std::function<void(const Thumbnail&)>;

    ThumbnailQueue() = default;
    ~ThumbnailQueue() { m_stop.request_stop(); }
    ThumbnailQueue(const ThumbnailQueue&) = delete;
    ThumbnailQueue& operator=(const ThumbnailQueue&) = delete;

    /// A clip may be asked for again only when it was completed or given up.
    void ask(const URL& clip, Completion completion);
    /// Whether the clip was still waiting; else it is completed all the same.
    bool giveUp(const URL& clip);

private:
    struct Request {
        URL clip;
        Completion completion;
    };
    void start();

    std::list<Request> m_waiting;
    int m_running = 0;
    std::stop_source m_stop;
};

} // namespace anadrome::desktop

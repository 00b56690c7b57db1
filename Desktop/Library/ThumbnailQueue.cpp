#include "Desktop/Library/ThumbnailQueue.h"

#include "Platform/Dispatch/DispatchQueue.h"

#include <algorithm>

namespace anadrome::desktop {

namespace {

/// Decoding uses several threads as it is.
constexpr int mostAtOnce = 2;

} // namespace

void ThumbnailQueue::ask(const URL& clip, Completion completion) {
    m_waiting.push_front({clip, std::move(completion)});
    start();
}

bool ThumbnailQueue::giveUp(const URL& clip) {
    return std::erase_if(m_waiting, [&](const Request& request) { return request.clip == clip; }) > 0;
}

void ThumbnailQueue::start() {
    while (m_running < mostAtOnce && !m_waiting.empty()) {
        ++m_running;
        Request request = std::move(m_waiting.front());
        m_waiting.pop_front();
        DispatchQueue::global(QualityOfService::utility)
            .async([this, stop = m_stop.get_token(), request = std::move(request)] {
                const Thumbnail thumbnail = loadThumbnail(request.clip);
                // Both this and the queue's end are on the main thread.
                DispatchQueue::main().async([this, stop, thumbnail, completion = request.completion] {
                    if (stop.stop_requested())
                        return;
                    --m_running;
                    completion(thumbnail);
                    start();
                });
            });
    }
}

} // namespace anadrome::desktop

#include "Platform/AVFoundation/Capture/PictureRelay.h"

#include "Platform/Dispatch/DispatchQueue.h"

#include <utility>

namespace anadrome::capture {

void PictureRelay::show(ShownPicture picture) {
    const std::lock_guard lock(m_mutex);
    if (!std::exchange(m_waiting, std::move(picture)))
        DispatchQueue::main().async([self = shared_from_this()] { self->deliver(); });
}

void PictureRelay::deliver() {
    std::optional<ShownPicture> newest;
    {
        const std::lock_guard lock(m_mutex);
        newest = std::exchange(m_waiting, std::nullopt);
    }
    if (m_sink && newest)
        m_sink->show(*newest);
}

} // namespace anadrome::capture

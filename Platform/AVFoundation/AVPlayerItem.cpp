#include "Platform/AVFoundation/AVPlayerItem.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

CMTime AVPlayerItem::duration() const {
    return m_status == AVPlayerItemStatus::readyToPlay ? m_asset->duration() : kCMTimeIndefinite;
}

void AVPlayerItem::load(std::function<void()> loaded) {
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([self = shared_from_this(), loaded = std::move(loaded)]() mutable {
            self->m_asset->tracks();
            // Moved on, so that nothing of the item or of its user ends on this thread.
            DispatchQueue::main().async([self = std::move(self), loaded = std::move(loaded)] {
                self->setLoaded();
                loaded();
            });
        });
}

void AVPlayerItem::setLoaded() {
    const bool isReadable = !m_asset->tracks().empty() && !m_asset->loadError();
    m_status = isReadable ? AVPlayerItemStatus::readyToPlay : AVPlayerItemStatus::failed;
    if (!isReadable)
        m_error = m_asset->loadError().value_or(makeAVError(AVErrorInvalidSourceMedia));
}

} // namespace anadrome

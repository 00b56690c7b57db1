#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Foundation/NSError.h"

#include <functional>
#include <memory>
#include <optional>

namespace anadrome {

enum class AVPlayerItemStatus { unknown = 0, readyToPlay = 1, failed = 2 };

/// Posted on the main thread, with the item as object, when play has reached the item's end, or its beginning
/// at a negative rate. The rate is 0 by then.
inline constexpr const char* AVPlayerItemDidPlayToEndTimeNotification =
    "AVPlayerItemDidPlayToEndTimeNotification";

/// A movie file while it is played: whether and how long it can be. Main thread only.
class AVPlayerItem : public std::enable_shared_from_this<AVPlayerItem> {
public:
    explicit AVPlayerItem(const URL& url) : m_asset(AVAsset::assetWithURL(url)) {}

    /// Asking it for a property before the item is loaded blocks.
    const std::shared_ptr<AVAsset>& asset() const { return m_asset; }

    AVPlayerItemStatus status() const { return m_status; }
    /// Set when the status is failed.
    const std::optional<NSError>& error() const { return m_error; }
    /// Indefinite unless the item is ready.
    CMTime duration() const;

    /// Looks at the file on another thread, then sets the status and calls the block, on the main thread.
    void load(std::function<void()> loaded);

private:
    void setLoaded();

    const std::shared_ptr<AVAsset> m_asset;
    AVPlayerItemStatus m_status = AVPlayerItemStatus::unknown;
    std::optional<NSError> m_error;
};

} // namespace anadrome

#pragma once

#include "Platform/AVFoundation/PictureSink.h"

#include <memory>
#include <mutex>
#include <optional>

namespace anadrome::capture {

/// Brings pictures from another thread to a sink on the main one. Only the newest waits while that is busy;
/// those before it are dropped.
class PictureRelay : public std::enable_shared_from_this<PictureRelay> {
public:
    /// Null for none. Main thread only.
    void setSink(std::shared_ptr<PictureSink> sink) { m_sink = std::move(sink); }

    /// Any thread; never waits for the main one.
    void show(ShownPicture picture);

private:
    void deliver();

    std::shared_ptr<PictureSink> m_sink;
    std::mutex m_mutex;
    std::optional<ShownPicture> m_waiting;
};

} // namespace anadrome::capture

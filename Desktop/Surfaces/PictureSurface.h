#pragma once

#include "Platform/AVFoundation/PictureSink.h"

#include <QPointer>
#include <QVideoSink>

namespace anadrome {

/// Shows a player's pictures on a video sink, such as that of a VideoOutput. Each picture is copied once, so
/// its buffer is free again when show() returns. Main thread only.
///
/// A VideoOutput of the library has three limits. It knows square pixels only, so it is to be given the shape
/// of the upright natural size and to stretch what it shows. It turns pictures as the first one told, so
/// every clip wants a VideoOutput of its own. And a window that has shown HLG shows PQ as if it were HLG, and
/// the other way round.
///
/// A frame's start time is the picture's time in microseconds.
class PictureSurface : public PictureSink {
public:
    /// The sink stays its owner's, and may go first: then pictures go nowhere.
    explicit PictureSurface(QVideoSink* sink) : m_sink(sink) {}

    void show(const ShownPicture& picture) override;

private:
    const QPointer<QVideoSink> m_sink;
};

} // namespace anadrome

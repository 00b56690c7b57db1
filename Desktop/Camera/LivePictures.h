#pragma once

#include "Platform/AVFoundation/PictureSink.h"

#include <QObject>
#include <QSizeF>
#include <QVideoSink>
#include <QtQmlIntegration>
#include <memory>

namespace anadrome::desktop {

/// The place of a camera's pictures. Main thread only.
class LivePictures : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the camera")
    /// Width by height; that of most cameras until there is a picture.
    Q_PROPERTY(double aspect READ aspect NOTIFY aspectChanged)

public:
    using QObject::QObject;

    double aspect() const { return m_aspect; }

    /// The pictures are shown on this sink from now on, at whatever size. The sink may go first.
    Q_INVOKABLE void showOn(QVideoSink* sink, const QSizeF& pixels);
    /// Nobody can see the pictures any more.
    Q_INVOKABLE void leave();

    /// Null while there is none.
    const std::shared_ptr<PictureSink>& surface() const { return m_surface; }

Q_SIGNALS:
    void aspectChanged();
    void surfaceChanged();

private:
    void setAspect(double aspect);

    double m_aspect = 16.0 / 9;
    std::shared_ptr<PictureSink> m_surface;
};

} // namespace anadrome::desktop

#pragma once

#include <QQuickImageProvider>
#include <QUrl>
#include <string>

namespace anadrome::desktop {

/// Shows pictures that came from outside as bytes: "image://pictures/" and the bytes themselves in base64.
/// Only kinds that hold nothing but pixels are decoded. Any thread.
class PictureProvider : public QQuickImageProvider {
public:
    PictureProvider() : QQuickImageProvider(Image, ForceAsynchronousImageLoading) {}

    /// Of an encoded picture; empty for no bytes.
    static QUrl addressOf(const std::string& picture);

    /// A null image for what is no picture. One that is larger than requested is made smaller, in its shape.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace anadrome::desktop

#include "Desktop/PictureProvider.h"

#include <QBuffer>
#include <QImageReader>

namespace anadrome::desktop {

namespace {

constexpr auto toAddress = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// Pixels; a picture from outside can't be larger than any screen needs.
constexpr QSize largest(4096, 4096);

} // namespace

QUrl PictureProvider::addressOf(const std::string& picture) {
    if (picture.empty())
        return {};
    return QUrl("image://pictures/" +
                QString::fromLatin1(QByteArray::fromStdString(picture).toBase64(toAddress)));
}

QImage PictureProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    QByteArray bytes = QByteArray::fromBase64(id.toLatin1(), toAddress);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (!QByteArrayList{"png", "jpeg", "gif", "webp"}.contains(reader.format()))
        return {};
    reader.setAutoTransform(true);
    const QSize full = reader.size();
    const QSize room = requestedSize.isEmpty() ? largest : requestedSize.boundedTo(largest);
    if (full.width() > room.width() || full.height() > room.height())
        reader.setScaledSize(full.scaled(room, Qt::KeepAspectRatio));
    const QImage image = reader.read();
    if (size)
        *size = image.size();
    return image;
}

} // namespace anadrome::desktop

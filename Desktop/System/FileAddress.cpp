#include "Desktop/System/FileAddress.h"

namespace anadrome::desktop {

std::optional<URL> fileAt(const QUrl& address) {
    if (!address.isLocalFile() || !address.host().isEmpty() || address.path().isEmpty())
        return std::nullopt;
    const QByteArray encoded = address.path(QUrl::FullyEncoded).toLatin1();
    return URL::fileURLWithPath(QByteArray::fromPercentEncoding(encoded).toStdString());
}

QUrl addressOf(const URL& file) {
    return QUrl::fromEncoded(QByteArray::fromStdString(file.absoluteString()));
}

} // namespace anadrome::desktop

#include "Desktop/System/FileAddress.h"

#include "Platform/Foundation/TemporaryDirectory.h"

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

bool isTemporary(const URL& file) {
    return TemporaryDirectory::contains(file);
}

} // namespace anadrome::desktop

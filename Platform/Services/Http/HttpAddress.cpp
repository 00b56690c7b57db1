#include "Platform/Services/Http/HttpAddress.h"

#include <QUrl>

namespace anadrome {

bool isHttpAddress(std::string_view address) {
    // Longer than any address that servers take.
    constexpr std::size_t longest = 8192;
    if (address.size() > longest)
        return false;
    const QUrl url(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
                   QUrl::StrictMode);
    return url.isValid() && (url.scheme() == "http" || url.scheme() == "https") && !url.host().isEmpty() &&
           url.userInfo().isEmpty();
}

} // namespace anadrome

#include "Desktop/Texts.h"

#include "Platform/Foundation/NSBundle.h"

#include <cmath>

namespace anadrome::desktop {

QString Texts::of(const QString& key) {
    return QString::fromStdString(NSLocalizedString(key.toStdString()));
}

QString Texts::clock(double seconds) {
    const auto tenths = static_cast<qint64>(std::floor(std::max(seconds, 0.0) * 10));
    return QString("%1:%2.%3").arg(tenths / 600).arg(tenths / 10 % 60, 2, 10, QChar('0')).arg(tenths % 10);
}

} // namespace anadrome::desktop

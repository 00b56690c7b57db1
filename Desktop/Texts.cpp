#include "Desktop/Texts.h"

#include "Platform/Foundation/NSBundle.h"

#include <QLocale>
#include <cmath>

namespace anadrome::desktop {

QString Texts::of(const QString& key) {
    return QString::fromStdString(NSLocalizedString(key.toStdString()));
}

QString Texts::clock(double seconds) {
    if (seconds >= 3600)
        return length(std::floor(seconds));
    const auto tenths = static_cast<qint64>(std::floor(std::max(seconds, 0.0) * 10));
    return QString("%1:%2.%3").arg(tenths / 600).arg(tenths / 10 % 60, 2, 10, QChar('0')).arg(tenths % 10);
}

QString Texts::length(double seconds) {
    const qint64 whole = std::max(std::llround(seconds), 1LL);
    const auto twoDigits = [](qint64 number) { return QString("%1").arg(number, 2, 10, QChar('0')); };
    const QString rest = twoDigits(whole % 60);
    if (whole < 3600)
        return QString::number(whole / 60) + ':' + rest;
    return QString::number(whole / 3600) + ':' + twoDigits(whole / 60 % 60) + ':' + rest;
}

QString Texts::month(const QDate& day) {
    const QLocale language(QString::fromStdString(NSBundle::mainBundle().preferredLocalizations().front()));
    return language.toString(day, of("LibraryMonth"));
}

} // namespace anadrome::desktop

#pragma once

#include <QDate>
#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// Texts that only the desktop has, and how it writes numbers.
class Texts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// In the user's language, from the program's tables.
    Q_INVOKABLE static QString of(const QString& key);
    /// A time of a movie: "1:05.3"; from an hour on "1:02:05".
    Q_INVOKABLE static QString clock(double seconds);
    /// A clip's length in whole seconds, of which every clip has one: "1:05", "1:02:05".
    static QString length(double seconds);
    /// The month of a day: "March 2024".
    static QString month(const QDate& day);
};

} // namespace anadrome::desktop

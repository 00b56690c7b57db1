#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// Which files may be clips, as far as their types tell. Main thread only.
class ClipFiles : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// For file dialogs: clips by the ends of their names, and all files.
    Q_PROPERTY(QStringList nameFilters READ nameFilters CONSTANT)

public:
    using QObject::QObject;

    static QStringList nameFilters();
    /// By its name alone where the address is elsewhere.
    Q_INVOKABLE static bool mayBeClip(const QUrl& address);
};

} // namespace anadrome::desktop

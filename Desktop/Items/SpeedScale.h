#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// Places on the track of a speed slider, as its value tells them.
class SpeedScale : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Where the clip keeps its speed.
    Q_PROPERTY(double usual READ usual CONSTANT)

public:
    using QObject::QObject;

    static double usual();
    /// So many of the shown speeds further; beyond the track's ends perhaps.
    Q_INVOKABLE static double after(double place, int steps);
};

} // namespace anadrome::desktop

#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QStringList>

namespace anadrome::desktop {

/// A dialog.
class AlertScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)
    /// The titles of the choices.
    Q_PROPERTY(QList<QString> actions READ actions CONSTANT)

public:
    using ShownScreen::ShownScreen;

    QString title() const;
    QString message() const;
    QStringList actions() const;
    Q_INVOKABLE void choose(int index);
    /// Chooses what cancels, else the only choice; without effect if there is neither.
    void close() override;
};

} // namespace anadrome::desktop

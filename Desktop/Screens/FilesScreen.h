#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QList>
#include <QUrl>

namespace anadrome::desktop {

/// A choice of files from anywhere.
class FilesScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")

public:
    using ShownScreen::ShownScreen;

    /// What isn't on this computer is passed over, and the user told so.
    Q_INVOKABLE void accept(const QList<QUrl>& files);
    void close() override { accept({}); }
};

} // namespace anadrome::desktop

#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The open clip.
class EditScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// The file's; empty for a clip whose file the user hasn't named.
    Q_PROPERTY(QString clipName READ clipName CONSTANT)

public:
    using ShownScreen::ShownScreen;

    QString clipName() const;
};

} // namespace anadrome::desktop

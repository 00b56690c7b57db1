#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The list of ways to the program's makers, on a stack of its own.
class SettingsScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")

public:
    using ShownScreen::ShownScreen;

    /// The button in the stack's bar.
    void close() override;
};

} // namespace anadrome::desktop

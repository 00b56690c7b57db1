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

    /// Whether a row of the table does anything: one that opens an address needs one to be deployed.
    Q_INVOKABLE static bool leads(int section, int row);
    /// The button in the stack's bar.
    void close() override;
};

} // namespace anadrome::desktop

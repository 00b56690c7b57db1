#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The first screen.
class TitleScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// Whether the strip of other programs leads anywhere.
    Q_PROPERTY(bool offersApps READ offersApps CONSTANT)

public:
    using ShownScreen::ShownScreen;

    bool offersApps() const;
};

} // namespace anadrome::desktop

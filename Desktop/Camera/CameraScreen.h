#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The camera.
class CameraScreen : public ShownScreen {
    Q_OBJECT

public:
    using ShownScreen::ShownScreen;

    void close() override;
};

} // namespace anadrome::desktop

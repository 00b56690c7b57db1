#include "Desktop/System/BringForward.h"

#include <QtGlobal>

namespace anadrome::desktop {

void bringForward(QWindow& window, const std::string& activationToken) {
    // The window system's plugin takes the token from here, and from nowhere else.
    if (!activationToken.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

} // namespace anadrome::desktop

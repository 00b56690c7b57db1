#include "Desktop/System/BringForward.h"

#include <QGuiApplication>

namespace anadrome::desktop {

void bringForward(QWindow& window, const std::string& activationToken) {
    // The plugin of this window system takes the token from here, and from nowhere else.
    if (!activationToken.empty() && QGuiApplication::platformName().startsWith("wayland"))
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

} // namespace anadrome::desktop

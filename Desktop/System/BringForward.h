#pragma once

#include <QWindow>
#include <string>

namespace anadrome::desktop {

/// Brings a window to the front and gives it the keyboard, as far as the desktop lets it. The token is the
/// desktop's permission, if there is one. Main thread only.
void bringForward(QWindow& window, const std::string& activationToken);

} // namespace anadrome::desktop

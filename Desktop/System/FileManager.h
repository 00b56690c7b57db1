#pragma once

#include <QUrl>

namespace anadrome::desktop {

/// Shows a file marked in its folder; the folder alone where no file manager can do that. Returns at once.
void showInFileManager(const QUrl& file);

} // namespace anadrome::desktop

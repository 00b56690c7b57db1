#pragma once

#include "Platform/Foundation/URL.h"

#include <QUrl>
#include <optional>

namespace anadrome::desktop {

/// The file that the address names; none if it isn't on this computer. Names may be any bytes, which Qt's own
/// way to a path would change.
std::optional<URL> fileAt(const QUrl& address);

/// The other way round.
QUrl addressOf(const URL& file);

/// Whether it lies in the folder for files that don't outlive the program.
bool isTemporary(const URL& file);

} // namespace anadrome::desktop

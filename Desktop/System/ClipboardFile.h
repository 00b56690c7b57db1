#pragma once

#include <QMimeData>
#include <QUrl>

namespace anadrome::desktop {

/// The first file that was copied in a file manager, or the existing file whose path was copied as text;
/// empty if it is something else.
QUrl fileOnClipboard(const QMimeData& copied);

} // namespace anadrome::desktop

#pragma once

#include <QQuickImageProvider>

namespace anadrome::desktop {

/// Draws the program's line icons: "image://icons/NAME/COLOUR", the colour as six or eight hexadecimal
/// digits. Any thread.
class IconProvider : public QQuickImageProvider {
public:
    IconProvider() : QQuickImageProvider(Image) {}

    /// A null image for a name that there is no icon for.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace anadrome::desktop

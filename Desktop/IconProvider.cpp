#include "Desktop/IconProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace anadrome::desktop {

namespace {

constexpr int gridSize = 24;
/// What the drawings are drawn in.
constexpr auto drawnColour = "#000000";

} // namespace

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString name = id.section('/', 0, 0);
    const QColor colour('#' + id.section('/', 1, 1));
    QFile file(":/Anadrome/icons/" + name + ".svg");
    if (!file.open(QIODevice::ReadOnly) || !colour.isValid())
        return {};
    QSvgRenderer drawing(file.readAll().replace(drawnColour, colour.name().toLatin1()));
    const QSize wanted = requestedSize.isEmpty() ? QSize(gridSize, gridSize) : requestedSize;
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    *size = wanted;
    return image;
}

} // namespace anadrome::desktop

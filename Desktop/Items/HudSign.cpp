#include "Desktop/Items/HudSign.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace anadrome::desktop {

namespace {

/// Everything is drawn on a square of this side, and made as large as the item.
constexpr double side = 64;

/// The painter counts angles in sixteenths of a degree, against the clock from three o'clock.
constexpr int degree = 16;

QPen penOf(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QRectF inner(double margin) {
    return QRectF(0, 0, side, side).adjusted(margin, margin, -margin, -margin);
}

/// The beginning of a path.
QPainterPath begun(const QPolygonF& points, double part) {
    double left = 0;
    for (qsizetype i = 1; i < points.size(); ++i)
        left += QLineF(points[i - 1], points[i]).length();
    left *= part;
    QPainterPath path(points.first());
    for (qsizetype i = 1; i < points.size() && left > 0; ++i) {
        const QLineF line(points[i - 1], points[i]);
        path.lineTo(line.pointAt(std::min(1.0, left / line.length())));
        left -= line.length();
    }
    return path;
}

} // namespace

HudSign::HudSign(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    for (const auto changed : {&HudSign::kindChanged, &HudSign::partChanged, &HudSign::colorChanged})
        connect(this, changed, this, [this] { update(); });
}

void HudSign::paint(QPainter* painter) {
    painter->scale(width() / side, height() / side);
    if (m_kind == "pie")
        paintPie(*painter);
    else if (m_kind == "tick")
        paintTick(*painter);
    else
        paintRing(*painter);
}

void HudSign::paintPie(QPainter& painter) const {
    painter.setPen(penOf(m_color, 3));
    painter.drawEllipse(inner(1.5));
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawPie(inner(7), 90 * degree, static_cast<int>(std::clamp(m_part, 0.0, 1.0) * -360 * degree));
}

void HudSign::paintRing(QPainter& painter) const {
    painter.setPen(penOf(m_color, 5));
    painter.drawArc(inner(4), 0, 270 * degree);
}

void HudSign::paintTick(QPainter& painter) const {
    painter.setPen(penOf(m_color, 6));
    painter.drawPath(begun({{8, 34}, {26, 51}, {56, 15}}, m_part));
}

} // namespace anadrome::desktop

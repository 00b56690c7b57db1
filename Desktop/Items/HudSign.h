#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// The drawing in the middle of the busy overlay. Painted without the graphics card, whose programs for
/// curves would have to be made ready just when a job begins.
class HudSign : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// "pie", "ring" or "tick".
    Q_PROPERTY(QString kind MEMBER m_kind NOTIFY kindChanged)
    /// How much of the pie is filled, or how far the tick is drawn, from 0 to 1.
    Q_PROPERTY(double part MEMBER m_part NOTIFY partChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)

public:
    explicit HudSign(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void kindChanged();
    void partChanged();
    void colorChanged();

private:
    void paintPie(QPainter& painter) const;
    void paintRing(QPainter& painter) const;
    void paintTick(QPainter& painter) const;

    QString m_kind = "ring";
    double m_part = 0;
    QColor m_color;
};

} // namespace anadrome::desktop

#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// The busy overlay that is in use, as a storyboard sees it. Main thread only.
class Hud : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    /// "pie", "ring" or "tick".
    Q_PROPERTY(QString kind READ kind NOTIFY changed)
    /// From 0 to 1.
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    /// Style of the card: light, else dark.
    Q_PROPERTY(bool light READ isLight NOTIFY changed)
    /// Whether what lies beneath shines through the card.
    Q_PROPERTY(bool vibrant READ isVibrant NOTIFY changed)

public:
    using QObject::QObject;

    bool isVisible() const { return m_shown.isVisible; }
    QString kind() const { return m_shown.kind; }
    double progress() const { return m_shown.progress; }
    QString text() const { return m_shown.text; }
    QString detail() const { return m_shown.detail; }
    bool isLight() const { return m_shown.isLight; }
    bool isVibrant() const { return m_shown.isVibrant; }

    /// Looks at the overlay anew; what only advances is told a few times a second. What it showed last stays
    /// readable after it has gone, for it to fade.
    void update();

Q_SIGNALS:
    void changed();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Shown {
        bool isVisible = false;
        QString kind = "ring";
        double progress = 0;
        QString text;
        QString detail;
        bool isLight = false;
        bool isVibrant = false;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    Shown m_shown;
    QBasicTimer m_advance;
};

} // namespace anadrome::desktop

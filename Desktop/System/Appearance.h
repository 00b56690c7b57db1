#pragma once

#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// What the desktop's user has chosen for all programs, as far as the desktop tells. Follows changes. Main
/// thread only.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Light until the desktop says otherwise.
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    /// Whether nothing is to move on the screen beyond fading.
    Q_PROPERTY(bool reducedMotion READ reducesMotion NOTIFY changed)

public:
    /// Asks the desktop's settings portal, without waiting for it.
    explicit Appearance(QObject* parent = nullptr);

    bool isDark() const { return m_isDark; }
    void setDark(bool isDark);
    bool reducesMotion() const { return m_reducesMotion; }
    void setReducesMotion(bool reduces);

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& group, const QString& key);

    bool m_isDark = false;
    bool m_reducesMotion = false;
};

} // namespace anadrome::desktop

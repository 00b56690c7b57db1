#include "Desktop/System/Appearance.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace anadrome::desktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";

constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";
constexpr auto desktopInterface = "org.gnome.desktop.interface";
constexpr auto enableAnimations = "enable-animations";

constexpr uint prefersDark = 1;

/// The portal wraps what it is asked for once more than what it tells by itself.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

Appearance::Appearance(QObject* parent) : QObject(parent) {
    QDBusConnection::sessionBus().connect(service, path, interface, "SettingChanged", this,
                                          SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearance, colorScheme);
    ask(desktopInterface, enableAnimations);
}

void Appearance::ask(const QString& group, const QString& key) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, "Read");
    call << group << key;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            settingChanged(group, key, reply.value());
        watcher->deleteLater();
    });
}

void Appearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    const QVariant plain = unwrapped(value.variant());
    if (group == appearance && key == colorScheme)
        setDark(plain.toUInt() == prefersDark);
    if (group == desktopInterface && key == enableAnimations)
        setReducesMotion(!plain.toBool());
}

void Appearance::setDark(bool isDark) {
    m_isDark = isDark;
    Q_EMIT changed();
}

void Appearance::setReducesMotion(bool reduces) {
    m_reducesMotion = reduces;
    Q_EMIT changed();
}

} // namespace anadrome::desktop

#pragma once

#include <QDBusMessage>
#include <QObject>

namespace anadrome::desktop {

/// A message beside the desktop's clock or wherever the desktop shows such; at most one at a time. Goes
/// through the desktop's portal, else straight to its notification server; where there is neither, nothing is
/// shown. Main thread only.
class Notification : public QObject {
    Q_OBJECT

public:
    Notification();

    void show(const QString& title, const QString& text);
    void withdraw();

Q_SIGNALS:
    /// The user clicked it. The token is the desktop's permission to come to the front; it may be empty.
    void clicked(const QString& activationToken);

private Q_SLOTS:
    void portalActionInvoked(const QString& id, const QString& action, const QVariantList& parameters);
    void activationTokenCame(uint id, const QString& token);
    void actionInvoked(uint id, const QString& action);

private:
    enum class Shower { nobody, portal, server };

    void askServer(const QString& title, const QString& text);
    void serverAnswered(const QDBusMessage& answer);

    Shower m_shower = Shower::nobody;
    /// The server's number for it; 0 is none.
    uint m_id = 0;
    QString m_activationToken;
};

} // namespace anadrome::desktop

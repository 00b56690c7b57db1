#pragma once

#include "Desktop/System/HandOverOutcome.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

namespace anadrome::desktop {

/// What the user is asked through one of the desktop's portals, as which program is to open a file. Made by
/// send(), and gone with its outcome. Main thread only.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    /// Calls a method of a portal ("Email", "ComposeEmail"), with no parent window before the arguments and
    /// the options behind them. `told` hears later what came of it, never if the portal goes meanwhile; it
    /// fails where there is no such portal or it has nobody to ask.
    static void send(const QString& portal, const QString& method, const QVariantList& arguments,
                     QVariantMap options, HandOverTold told);

private Q_SLOTS:
    void respond(uint code);

private:
    explicit PortalRequest(HandOverTold told);
    void listenAt(const QString& path);
    void answered(const QDBusMessage& answer);
    void end(HandOverOutcome outcome);

    HandOverTold m_told;
    QString m_path;
};

} // namespace anadrome::desktop

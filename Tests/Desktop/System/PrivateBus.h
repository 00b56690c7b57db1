#pragma once

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Environment.h"

#include <QDBusConnection>
#include <gtest/gtest.h>

namespace anadrome::desktop {

/// A bus of the test's own that the program takes for the session's and the system's. To be made before the
/// program looks for either.
class PrivateBus {
public:
    /// A further connection to the bus, for a service that the test plays.
    QDBusConnection service(const QString& name) const {
        QDBusConnection connection = QDBusConnection::connectToBus(m_address, name);
        EXPECT_TRUE(connection.registerService(name)) << name.toStdString();
        return connection;
    }

private:
    const testing_support::ChildProcess m_daemon{{"dbus-daemon", "--session", "--nofork", "--print-address"},
                                                 {}};
    const QString m_address = QString::fromStdString(m_daemon.readLine());
    const testing_support::Environment m_session{"DBUS_SESSION_BUS_ADDRESS", m_address.toStdString()};
    const testing_support::Environment m_system{"DBUS_SYSTEM_BUS_ADDRESS", m_address.toStdString()};
};

} // namespace anadrome::desktop

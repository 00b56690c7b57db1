#pragma once

#include "Tests/Desktop/System/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>
#include <map>

namespace anadrome::desktop {

/// Plays a service on the test's bus: keeps the calls that it gets, and answers those that it knows.
class FakeService : public QDBusVirtualObject {
public:
    /// What is returned, by interface and method ("org.example.Shop.Open").
    using Answers = std::map<QString, std::function<QVariantList()>>;

    FakeService(const PrivateBus& bus, const QString& name, Answers answers)
        : m_connection(bus.service(name)), m_answers(std::move(answers)) {
        m_connection.registerVirtualObject("/", this, QDBusConnection::SubPath);
    }

    QList<QDBusMessage> calls(const QString& method) const {
        QList<QDBusMessage> found;
        for (const QDBusMessage& call : m_calls)
            if (call.member() == method)
                found.append(call);
        return found;
    }

    void tell(const QString& path, const QString& interface, const QString& signal,
              const QVariantList& values) {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(values);
        m_connection.send(message);
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        const auto answer = m_answers.find(call.interface() + '.' + call.member());
        if (answer == m_answers.end())
            return false;
        m_calls.append(call);
        return connection.send(call.createReply(answer->second()));
    }

private:
    QDBusConnection m_connection;
    const Answers m_answers;
    QList<QDBusMessage> m_calls;
};

} // namespace anadrome::desktop

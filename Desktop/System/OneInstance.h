#pragma once

#include "Desktop/System/StartRequest.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <QLocalServer>
#include <functional>

namespace anadrome::desktop {

/// Keeps the program to one instance a user: the first holds a lock in the user's runtime folder and listens
/// on a socket beside it, and later ones hand their request over.
///
/// A socket and no name on the session bus: it serves where there is no bus, and by the lock a dead first
/// instance is known at once, whatever it left. Main thread only.
class OneInstance {
public:
    /// Takes the lock if it is free. Where there is no runtime folder every instance is the first.
    OneInstance();

    bool isFirst() const { return m_isFirst; }

    /// Hands a request to the first instance; false if that doesn't take it within three seconds, as when it
    /// hangs. Needs an application object, but no event loop.
    bool handOver(const StartRequest& request) const;

    /// For the first: hears of later starts as long as this lives, from the event loop.
    void listen(std::function<void(const StartRequest&)> started);

private:
    void receive(QLocalSocket& socket);

    QString m_socketPath;
    FileDescriptor m_lock;
    bool m_isFirst = true;
    std::function<void(const StartRequest&)> m_started;
    QLocalServer m_server;
};

} // namespace anadrome::desktop

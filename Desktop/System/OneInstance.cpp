#include "Desktop/System/OneInstance.h"

#include "Platform/Foundation/FileLock.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <chrono>
#include <fcntl.h>
#include <optional>

namespace anadrome::desktop {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 3s;
/// Enough for the longest path and for any token.
constexpr qint64 mostBytes = 16 << 10;
/// What the first instance says when it is there to listen. Nothing is sent before, so nothing that its
/// sender has given up on is ever carried out.
constexpr char greeting = '?';

/// Two fields that end with a zero byte, which neither can hold.
QByteArray serialized(const StartRequest& request) {
    return QByteArray::fromStdString(request.clip.path() + '\0' + request.activationToken + '\0');
}

std::optional<StartRequest> deserialized(const QByteArray& message) {
    const QList<QByteArray> fields = message.split('\0');
    if (fields.size() != 3 || !fields[2].isEmpty())
        return std::nullopt;
    return StartRequest{URL::fileURLWithPath(fields[0].toStdString()), fields[1].toStdString()};
}

/// The first may have its lock, but not its socket yet.
bool connectTo(QLocalSocket& socket, const QString& path, const QDeadlineTimer& deadline) {
    while (!deadline.hasExpired()) {
        socket.connectToServer(path);
        if (socket.waitForConnected(static_cast<int>(deadline.remainingTime())))
            return true;
        QThread::msleep(20);
    }
    return false;
}

} // namespace

OneInstance::OneInstance() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        return;
    m_socketPath = folder + "/anadrome.socket";
    const std::string lockPath = folder.toStdString() + "/anadrome.lock";
    m_lock = openLocked(lockPath, O_CREAT, false);
    m_isFirst = static_cast<bool>(m_lock);
}

bool OneInstance::handOver(const StartRequest& request) const {
    const QDeadlineTimer deadline(patience);
    QLocalSocket socket;
    if (!connectTo(socket, m_socketPath, deadline) ||
        !socket.waitForReadyRead(static_cast<int>(deadline.remainingTime())) ||
        socket.read(1) != QByteArray(1, greeting))
        return false;
    const QByteArray message = serialized(request);
    return socket.write(message) == message.size() &&
           (socket.bytesToWrite() == 0 ||
            socket.waitForBytesWritten(static_cast<int>(deadline.remainingTime())));
}

void OneInstance::listen(std::function<void(const StartRequest&)> started) {
    if (!m_lock)
        return;
    m_started = std::move(started);
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection())
            receive(*socket);
    });
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    // Whoever held the lock before is dead.
    QLocalServer::removeServer(m_socketPath);
    m_server.listen(m_socketPath);
}

void OneInstance::receive(QLocalSocket& socket) {
    socket.setReadBufferSize(mostBytes);
    QObject::connect(&socket, &QLocalSocket::readyRead, &m_server, [&socket] {
        if (socket.bytesAvailable() >= mostBytes)
            socket.abort();
    });
    QObject::connect(&socket, &QLocalSocket::disconnected, &m_server, [this, &socket] {
        if (const auto request = deserialized(socket.readAll()))
            m_started(*request);
        socket.deleteLater();
    });
    socket.write(&greeting, 1);
}

} // namespace anadrome::desktop

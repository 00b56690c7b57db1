#include "Tests/Support/RawServer.h"

#include "Tests/Support/Certificate.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTimer>
#include <stdexcept>
#include <utility>

namespace anadrome::testing_support {

namespace {

QByteArray contentOf(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path);
    return file.readAll();
}

QSslConfiguration serverConfiguration(const Certificate& certificate) {
    QSslConfiguration configuration;
    configuration.setLocalCertificate(QSslCertificate(contentOf(certificate.certificateFile())));
    configuration.setPrivateKey(QSslKey(contentOf(certificate.keyFile()), QSsl::Ec));
    return configuration;
}

} // namespace

class RawServer::Server : public QObject {
public:
    Server(RawAnswer answer, const Certificate* certificate) : m_answer(std::move(answer)) {
        if (certificate) {
            auto tls = std::make_unique<QSslServer>();
            tls->setSslConfiguration(serverConfiguration(*certificate));
            m_listener = std::move(tls);
        } else {
            m_listener = std::make_unique<QTcpServer>();
        }
        m_address = certificate ? "https://127.0.0.1:" : "http://127.0.0.1:";
        connect(m_listener.get(), &QTcpServer::pendingConnectionAvailable, this, [this] { accept(); });
        if (!m_listener->listen(QHostAddress::LocalHost))
            throw std::runtime_error("cannot listen");
        m_address += std::to_string(m_listener->serverPort()) + '/';
    }

    const std::string& address() const { return m_address; }
    const std::string& received() const { return m_received; }
    std::size_t sentByteCount() const { return m_sentByteCount; }

private:
    void accept() {
        while (QTcpSocket* socket = m_listener->nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { receive(*socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::bytesWritten, socket,
                    [this](qint64 count) { m_sentByteCount += static_cast<std::size_t>(count); });
            receive(*socket);
        }
    }

    void receive(QTcpSocket& socket) {
        const std::string arrived = socket.readAll().toStdString();
        m_received += arrived;
        if (arrived.find("\r\n\r\n") != arrived.npos)
            answer(socket);
    }

    void answer(QTcpSocket& socket) {
        socket.write(m_answer.bytes.data(), static_cast<qint64>(m_answer.bytes.size()));
        if (!m_answer.repeated.empty())
            repeat(socket);
        else if (m_answer.closes)
            socket.disconnectFromHost();
    }

    void repeat(QTcpSocket& socket) {
        const auto sendOnce = [this, &socket] {
            if (socket.bytesToWrite() == 0)
                socket.write(m_answer.repeated.data(), static_cast<qint64>(m_answer.repeated.size()));
        };
        if (m_answer.isTrickle) {
            auto* timer = new QTimer(&socket);
            connect(timer, &QTimer::timeout, &socket, sendOnce);
            timer->start(20);
        } else {
            connect(&socket, &QTcpSocket::bytesWritten, &socket, sendOnce);
        }
    }

    const RawAnswer m_answer;
    std::unique_ptr<QTcpServer> m_listener;
    std::string m_address;
    std::string m_received;
    std::size_t m_sentByteCount = 0;
};

RawServer::RawServer(RawAnswer answer, const Certificate* certificate)
    : m_server(std::make_unique<Server>(std::move(answer), certificate)) {}

RawServer::~RawServer() = default;

std::string RawServer::address() const {
    return m_server->address();
}

const std::string& RawServer::received() const {
    return m_server->received();
}

std::size_t RawServer::sentByteCount() const {
    return m_server->sentByteCount();
}

std::string httpAnswer(const std::string& status, const std::string& headers, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\n" + headers + "Connection: close\r\n\r\n" + body;
}

} // namespace anadrome::testing_support

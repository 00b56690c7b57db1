#include "Tests/Support/ReferenceServer.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <thread>

namespace anadrome::testing_support {

namespace {

std::uint16_t freePort() {
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost))
        throw std::runtime_error("cannot find a free port");
    return server.serverPort();
}

bool isListening(std::uint16_t port) {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    return socket.waitForConnected(1000);
}

} // namespace

ReferenceServer::ReferenceServer() : m_port(freePort()) {
    start();
}

ReferenceServer::~ReferenceServer() {
    stop();
}

std::string ReferenceServer::address(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(m_port) + path;
}

void ReferenceServer::start() {
    m_process = std::make_unique<QProcess>();
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process->start(ANADROME_SOURCE_DIR "/scripts/serve",
                     {QString::number(m_port), QString::fromStdString(m_folder.path())});
    while (!isListening(m_port)) {
        // Which also takes note of its end.
        m_process->waitForFinished(10);
        if (m_process->state() == QProcess::NotRunning)
            throw std::runtime_error("scripts/serve ended");
    }
}

void ReferenceServer::stop() {
    if (!m_process)
        return;
    m_process->terminate();
    m_process->waitForFinished();
    m_process.reset();
}

std::vector<std::string> ReferenceServer::requests() const {
    std::ifstream log(m_folder.path() / "requests.log");
    std::vector<std::string> requests;
    for (std::string line; std::getline(log, line);)
        requests.push_back(line);
    return requests;
}

} // namespace anadrome::testing_support

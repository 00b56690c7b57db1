#include "Tests/Support/ReferenceServer.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

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
    const std::string script = ANADROME_SOURCE_DIR "/scripts/serve";
    const std::string port = std::to_string(m_port);
    const std::string folder = m_folder.path().string();
    // It dies with the test, however that ends.
    const char* command[] = {"setpriv",    "--pdeathsig",  "KILL", script.c_str(),
                             port.c_str(), folder.c_str(), nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int failure =
        ::posix_spawnp(&m_process, command[0], &actions, nullptr, const_cast<char**>(command), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error("setpriv can't be started");
    while (!isListening(m_port)) {
        if (::waitpid(m_process, nullptr, WNOHANG) != 0)
            throw std::runtime_error("scripts/serve ended");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void ReferenceServer::stop() {
    if (m_process <= 0)
        return;
    ::kill(m_process, SIGTERM);
    ::waitpid(std::exchange(m_process, -1), nullptr, 0);
}

std::vector<std::string> ReferenceServer::requests() const {
    std::ifstream log(m_folder.path() / "requests.log");
    std::vector<std::string> requests;
    for (std::string line; std::getline(log, line);)
        requests.push_back(line);
    return requests;
}

} // namespace anadrome::testing_support

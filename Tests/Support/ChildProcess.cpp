#include "Tests/Support/ChildProcess.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace anadrome::testing_support {

namespace {

constexpr const char* roleVariable = "ANADROME_TEST_ROLE";

} // namespace

ChildProcess::ChildProcess(const std::string& role, std::vector<std::string> environment) {
    environment.push_back(roleVariable + ("=" + role));
    std::vector<char*> entries;
    for (std::string& entry : environment)
        entries.push_back(entry.data());
    for (char** inherited = environ; *inherited; ++inherited)
        entries.push_back(*inherited);
    entries.push_back(nullptr);

    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("cannot make a pipe for a child process");
    m_output = ends[0];
    std::string program = "child of a test";
    char* const arguments[] = {program.data(), nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int failure = ::posix_spawn(&m_pid, "/proc/self/exe", &actions, nullptr, arguments, entries.data());
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    if (failure != 0)
        throw std::runtime_error("cannot start a child process");
}

ChildProcess::~ChildProcess() {
    if (m_pid > 0)
        kill();
    ::close(m_output);
}

std::string_view ChildProcess::ownRole() {
    const char* role = std::getenv(roleVariable);
    return role ? role : "";
}

std::string ChildProcess::readLine() const {
    std::string line;
    for (char character = 0; ::read(m_output, &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

void ChildProcess::kill() {
    ::kill(m_pid, SIGKILL);
    wait();
}

int ChildProcess::wait() {
    int status = 0;
    ::waitpid(std::exchange(m_pid, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace anadrome::testing_support

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

std::vector<std::string> withRole(const std::string& role, std::vector<std::string> environment) {
    environment.push_back(roleVariable + ("=" + role));
    return environment;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    return pointers;
}

} // namespace

ChildProcess::ChildProcess(const std::string& role, std::vector<std::string> environment)
    : ChildProcess({"/proc/self/exe"}, withRole(role, std::move(environment)), {}) {}

ChildProcess::ChildProcess(std::vector<std::string> command, std::vector<std::string> environment,
                           const std::string& errorFile) {
    std::vector<char*> arguments = pointersTo(command);
    arguments.push_back(nullptr);
    std::vector<char*> entries = pointersTo(environment);
    for (char** inherited = environ; *inherited; ++inherited)
        entries.push_back(*inherited);
    entries.push_back(nullptr);

    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("cannot make a pipe for a child process");
    m_output = ends[0];
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    if (!errorFile.empty())
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(),
                                           O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int failure =
        ::posix_spawnp(&m_pid, arguments[0], &actions, nullptr, arguments.data(), entries.data());
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

std::string ChildProcess::readLine(bool keepsEnd) const {
    std::string line;
    for (char character = 0; character != '\n' && ::read(m_output, &character, 1) == 1;)
        if (character != '\n' || keepsEnd)
            line += character;
    return line;
}

void ChildProcess::send(int signal) const {
    ::kill(m_pid, signal);
}

void ChildProcess::kill() {
    send(SIGKILL);
    wait();
}

int ChildProcess::wait() {
    int status = 0;
    ::waitpid(std::exchange(m_pid, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace anadrome::testing_support

#include "CommandRunner.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace anadrome::testing_support {

namespace {

[[noreturn]] void becomeCli(const std::vector<std::string>& arguments,
                            const CommandSurroundings& surroundings, int out, int err) {
    ::dup2(out, STDOUT_FILENO);
    ::dup2(err, STDERR_FILENO);
    ::setenv("XDG_CACHE_HOME", surroundings.cache.c_str(), 1);
    if (!surroundings.configuration.empty())
        ::setenv("XDG_CONFIG_HOME", surroundings.configuration.c_str(), 1);
    if (surroundings.fileSizeLimit >= 0) {
        const auto limit = static_cast<rlim_t>(surroundings.fileSizeLimit);
        const rlimit both{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &both);
    }
    std::vector<char*> argv{const_cast<char*>(ANADROME_CLI)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    ::execv(ANADROME_CLI, argv.data());
    ::_exit(127);
}

/// Reads what is there; false at the end.
bool readSome(int descriptor, std::string& text) {
    std::array<char, 4096> buffer;
    const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
    if (got > 0)
        text.append(buffer.data(), static_cast<std::size_t>(got));
    return got > 0;
}

/// The last that was told; -1 if none was.
int percentIn(const std::string& output) {
    constexpr std::string_view key = "\"percent\":";
    const std::size_t place = output.rfind(key);
    return place == std::string::npos ? -1 : std::atoi(output.c_str() + place + key.size());
}

void readBoth(pid_t child, int out, int err, const CommandSurroundings& surroundings, CommandResult& result) {
    int signal = surroundings.signal;
    std::array<pollfd, 2> pipes{{{out, POLLIN, 0}, {err, POLLIN, 0}}};
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        ::poll(pipes.data(), pipes.size(), -1);
        for (pollfd& pipe : pipes)
            if (pipe.fd >= 0 && pipe.revents && !readSome(pipe.fd, pipe.fd == out ? result.out : result.err))
                pipe.fd = -1;
        if (signal != 0 && percentIn(result.out) >= surroundings.signalAtPercent)
            ::kill(child, std::exchange(signal, 0));
    }
}

} // namespace

CommandResult runCli(const std::vector<std::string>& arguments, const CommandSurroundings& surroundings) {
    int out[2];
    int err[2];
    if (::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(err, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipes");
    const pid_t child = ::fork();
    if (child == 0)
        becomeCli(arguments, surroundings, out[1], err[1]);
    ::close(out[1]);
    ::close(err[1]);
    CommandResult result;
    readBoth(child, out[0], err[0], surroundings, result);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(out[0]);
    ::close(err[0]);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
}

} // namespace anadrome::testing_support

#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace anadrome::testing_support {

/// Another program at work, or this very test program, which plays a role instead of running tests: a
/// constructor function of it asks for ownRole() and ends the process. Killed with its owner.
class ChildProcess {
public:
    /// The entries ("NAME=value") come before the environment of this process. What the program writes to its
    /// standard error goes to the file, if there is one.
    ChildProcess(std::vector<std::string> command, std::vector<std::string> environment,
                 const std::string& errorFile = {});

    /// This very program in a role.
    ChildProcess(const std::string& role, std::vector<std::string> environment);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// The role that this process was started for; empty for the test program itself.
    static std::string_view ownRole();

    /// The next line of the child's standard output, which ends with the child at the latest: then it is
    /// empty, and else ends in a line feed if keepsEnd.
    std::string readLine(bool keepsEnd = false) const;

    void send(int signal) const;
    void kill();

    /// The exit code; minus the signal's number if one ended it.
    int wait();

private:
    pid_t m_pid = -1;
    int m_output = -1;
};

} // namespace anadrome::testing_support

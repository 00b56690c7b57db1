#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace anadrome::testing_support {

/// Another run of this very test program, which plays a role instead of running tests: a constructor function
/// of the program asks for ownRole() and ends the process. Killed with its owner.
class ChildProcess {
public:
    /// The entries ("NAME=value") come before the environment of this process.
    ChildProcess(const std::string& role, std::vector<std::string> environment);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// The role that this process was started for; empty for the test program itself.
    static std::string_view ownRole();

    /// The next line of the child's standard output, which ends with the child at the latest.
    std::string readLine() const;

    void kill();

    /// The exit code; -1 if a signal ended it.
    int wait();

private:
    pid_t m_pid = -1;
    int m_output = -1;
};

} // namespace anadrome::testing_support

#include "Platform/Foundation/Print.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <unistd.h>

namespace anadrome {

namespace {

/// One lock for both sinks: a front end may give the same function for both.
struct Sinks {
    std::mutex mutex;
    LineSink print;
    LineSink debug;
};

/// Never destroyed: threads of the global pool may print while the program's statics are torn down.
Sinks& sinks() {
    static Sinks& sinks = *new Sinks;
    return sinks;
}

void printToStandardOutput(std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace

void print(std::string_view line) {
    std::lock_guard lock(sinks().mutex);
    if (sinks().print)
        sinks().print(line);
    else
        printToStandardOutput(line);
}

void debugLog(std::string_view line) {
    std::lock_guard lock(sinks().mutex);
    if (sinks().debug)
        sinks().debug(line);
}

void setPrintSink(LineSink sink) {
    std::lock_guard lock(sinks().mutex);
    sinks().print = std::move(sink);
}

void setDebugSink(LineSink sink) {
    std::lock_guard lock(sinks().mutex);
    sinks().debug = std::move(sink);
}

void fatalError(std::string_view message) {
    const std::string line = std::string(message) + '\n';
    // Not through stdio: the thread that holds its lock may be the one that broke the invariant.
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
        if (written <= 0)
            break;
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    std::abort();
}

} // namespace anadrome

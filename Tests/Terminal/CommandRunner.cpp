#include "CommandRunner.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/ScratchFolder.h"

#include <cstdlib>
#include <fstream>
#include <string_view>
#include <utility>

namespace anadrome::testing_support {

namespace {

/// What a line of the output tells of the progress; -1 if it doesn't.
int percentIn(const std::string& line) {
    constexpr std::string_view key = "\"percent\":";
    const std::size_t place = line.rfind(key);
    return place == std::string::npos ? -1 : std::atoi(line.c_str() + place + key.size());
}

} // namespace

CommandResult runCli(const std::vector<std::string>& arguments, const CommandSurroundings& surroundings) {
    std::vector<std::string> command{ANADROME_CLI};
    if (surroundings.fileSizeLimit >= 0)
        command = {"prlimit", "--fsize=" + std::to_string(surroundings.fileSizeLimit), ANADROME_CLI};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment{"XDG_CACHE_HOME=" + surroundings.cache.string()};
    if (!surroundings.configuration.empty())
        environment.push_back("XDG_CONFIG_HOME=" + surroundings.configuration.string());

    const ScratchFolder folder;
    ChildProcess child(command, environment, folder.file("errors"));
    CommandResult result;
    int signal = surroundings.signal;
    for (std::string line; !(line = child.readLine(true)).empty(); result.out += line)
        if (signal != 0 && percentIn(line) >= surroundings.signalAtPercent)
            child.send(std::exchange(signal, 0));
    result.exitCode = child.wait();
    std::ifstream errors(folder.file("errors"), std::ios::binary);
    result.err.assign(std::istreambuf_iterator(errors), {});
    return result;
}

} // namespace anadrome::testing_support

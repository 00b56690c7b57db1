#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>

namespace anadrome::testing_support {

/// What a shell command prints to its standard output; nothing where there is no such command.
inline std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), got);
    return output;
}

} // namespace anadrome::testing_support

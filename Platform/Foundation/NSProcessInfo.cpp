#include "Platform/Foundation/NSProcessInfo.h"

#include "Platform/Foundation/Print.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <sys/random.h>
#include <unistd.h>

namespace anadrome {

namespace {

/// A random UUID (version 4) in capitals.
std::string makeUUID() {
    std::array<unsigned char, 16> bytes;
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        fatalError("The system gives no random numbers.");
    bytes[6] = (bytes[6] & 0x0F) | 0x40;
    bytes[8] = (bytes[8] & 0x3F) | 0x80;
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", bytes[i]);
        text += i == 4 || i == 6 || i == 8 || i == 10 ? "-" : "";
        text += digits;
    }
    return text;
}

} // namespace

NSProcessInfo& NSProcessInfo::processInfo() {
    static NSProcessInfo info;
    return info;
}

std::string NSProcessInfo::globallyUniqueString() {
    static std::atomic<std::uint64_t> counter = 0;
    char suffix[64];
    std::snprintf(suffix, sizeof suffix, "-%ld-%016llX", static_cast<long>(::getpid()),
                  static_cast<unsigned long long>(++counter));
    return makeUUID() + suffix;
}

} // namespace anadrome

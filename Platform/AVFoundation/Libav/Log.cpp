#include "Platform/AVFoundation/Libav/Log.h"

#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

extern "C" {
#include <libavutil/log.h>
}

namespace anadrome::libav {

namespace {

/// Lines that are no news: the program handles what they warn about.
constexpr std::string_view noise[] = {"deprecated pixel format used"};

/// A line that never ends isn't worth more.
constexpr std::size_t longestLine = 1024;

bool isNoise(std::string_view line) {
    return std::ranges::any_of(noise, [&](std::string_view part) { return line.find(part) != line.npos; });
}

/// The codec, format or filter that speaks. The libraries' own prefix adds its address in memory.
std::string prefixOf(void* source) {
    const AVClass* speaker = source ? *static_cast<AVClass**>(source) : nullptr;
    const std::string name = speaker ? speaker->item_name(source) : "";
    // A parser's context has no codec yet.
    return name.empty() || name == "NULL" ? "FFmpeg: " : "FFmpeg " + name + ": ";
}

/// Damaged files make a decoder say the same for every frame.
bool repeatsTheLast(const std::string& line) {
    static std::mutex& mutex = *new std::mutex;
    static std::string& last = *new std::string;
    const std::lock_guard lock(mutex);
    return std::exchange(last, line) == line;
}

void show(const std::string& line) {
    if (!isNoise(line) && !repeatsTheLast(line))
        debugLog(line);
}

void takePiece(void* source, int level, const char* format, va_list arguments) {
    if (level > AV_LOG_WARNING)
        return;
    thread_local std::string line;
    char piece[longestLine];
    std::vsnprintf(piece, sizeof piece, format, arguments);
    if (line.empty())
        line = prefixOf(source);
    line += piece;
    const bool isComplete = line.ends_with('\n');
    if (!isComplete && line.size() < longestLine)
        return;
    if (isComplete)
        line.pop_back();
    show(std::exchange(line, {}));
}

} // namespace

void routeLibraryLog() {
    static std::once_flag done;
    std::call_once(done, [] { av_log_set_callback(takePiece); });
}

} // namespace anadrome::libav

#include "Platform/AVFoundation/Libav/Log.h"

#include "Platform/Foundation/Print.h"

#include <cstdarg>
#include <mutex>
#include <string_view>

extern "C" {
#include <libavutil/log.h>
}

namespace anadrome::libav {

namespace {

void toDebugLog(void* source, int level, const char* format, va_list arguments) {
    if (level > AV_LOG_WARNING)
        return;
    char line[1024];
    int printPrefix = 1;
    av_log_format_line(source, level, format, arguments, line, sizeof line, &printPrefix);
    std::string_view text(line);
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    debugLog(text);
}

} // namespace

void routeLibraryLog() {
    static std::once_flag done;
    std::call_once(done, [] { av_log_set_callback(toDebugLog); });
}

} // namespace anadrome::libav

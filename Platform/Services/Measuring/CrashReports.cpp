#include "Platform/Services/Measuring/CrashReports.h"

#include "Platform/Foundation/UserFolders.h"
#include "Platform/Services/Measuring/UtcTime.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <execinfo.h>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

// From the signal on, only what needs neither memory nor a lock may run: the path and the stack are prepared
// before, and the first backtrace(), which loads a library, is made before too.

namespace anadrome {

namespace {

namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

constexpr std::size_t reportsKept = 5;
constexpr std::size_t mostCalls = 64;
constexpr std::string_view ending = ".txt";

struct Crash {
    int signal;
    std::string_view name;
};

constexpr Crash crashes[] = {
    {SIGSEGV, "SIGSEGV"}, {SIGBUS, "SIGBUS"}, {SIGFPE, "SIGFPE"}, {SIGILL, "SIGILL"}, {SIGABRT, "SIGABRT"},
};

/// Of the report to come. The time stands at its place only when it is known.
struct ReportPath {
    std::string text;
    std::size_t timeAt = 0;
};

ReportPath& reportPath() {
    static ReportPath& path = *new ReportPath;
    return path;
}

void put(int file, std::string_view text) {
    // A report that can't be written is none: there is nobody to tell.
    [[maybe_unused]] const ssize_t written = ::write(file, text.data(), text.size());
}

std::string_view nameOf(int signal) {
    const auto* found = std::ranges::find(crashes, signal, &Crash::signal);
    return found == std::end(crashes) ? "another signal" : found->name;
}

void writeReport(int signal) {
    const std::array<char, 21> time = utcText(std::chrono::system_clock::now());
    std::string& path = reportPath().text;
    std::ranges::copy(std::string_view(time.data()), path.data() + reportPath().timeAt);
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        return;
    put(file, "Anadrome " ANADROME_VERSION "\n");
    put(file, time.data());
    put(file, "\n");
    put(file, nameOf(signal));
    put(file, "\n");
    std::array<void*, mostCalls> calls;
    ::backtrace_symbols_fd(calls.data(), ::backtrace(calls.data(), calls.size()), file);
    ::close(file);
}

/// Should the report get stuck on what the crash has broken, the alarm ends the program.
void limitTime() {
    constexpr unsigned seconds = 5;
    std::signal(SIGALRM, SIG_DFL);
    ::alarm(seconds);
}

void handle(int signal) {
    static std::atomic_flag isCrashing;
    // Another thread is at it, and will end the program.
    while (isCrashing.test_and_set())
        ::pause();
    limitTime();
    writeReport(signal);
    std::signal(signal, SIG_DFL);
    // Waits until this returns, and so finds the thread where it crashed.
    std::raise(signal);
}

void useOwnStack() {
    static std::array<char, 64 * 1024> memory;
    stack_t stack{};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    ::sigaltstack(&stack, nullptr);
}

void handleCrashes() {
    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = SA_ONSTACK;
    ::sigfillset(&action.sa_mask);
    ::sigdelset(&action.sa_mask, SIGALRM);
    for (const Crash& crash : crashes) {
        struct sigaction former {};
        if (::sigaction(crash.signal, nullptr, &former) == 0 && former.sa_handler == SIG_DFL)
            ::sigaction(crash.signal, &action, nullptr);
    }
}

void prepareCalls() {
    std::array<void*, 1> calls;
    ::backtrace(calls.data(), calls.size());
}

/// Reports are named by their times, so the greatest names are the newest.
void removeOldReports(const std::string& folder) {
    std::error_code error;
    std::vector<std::string> reports;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().extension() == ending)
            reports.push_back(entry->path().string());
    std::ranges::sort(reports, std::greater());
    for (std::size_t i = reportsKept; i < reports.size(); ++i)
        fs::remove(reports[i], error);
}

} // namespace

void CrashReports::install(const std::string& folder) {
    if (isSanitized)
        return;
    makePrivateFolders(folder);
    removeOldReports(folder);
    const std::string_view placeOfTime = "0000-00-00T00:00:00Z";
    reportPath() = {.text = folder + '/' + std::string(placeOfTime) + '-' + std::to_string(::getpid()) +
                            std::string(ending),
                    .timeAt = folder.size() + 1};
    prepareCalls();
    useOwnStack();
    handleCrashes();
}

} // namespace anadrome

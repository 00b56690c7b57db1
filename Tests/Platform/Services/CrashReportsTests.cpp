#include "Platform/Services/Measuring/CrashReports.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/ScratchFolder.h"

#include <QRegularExpression>
#include <algorithm>
#include <alloca.h>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace anadrome;
using testing_support::ChildProcess;
namespace fs = std::filesystem;

namespace {

[[noreturn]] void overflowTheStack() {
    for (;;)
        *static_cast<volatile char*>(alloca(4096)) = 1;
}

[[gnu::constructor]] void playRole() {
    const char* folder = std::getenv("ANADROME_TEST_CRASHES");
    if (ChildProcess::ownRole().empty() || !folder)
        return;
    constexpr rlimit noCore{};
    ::setrlimit(RLIMIT_CORE, &noCore);
    CrashReports::install(folder);
    if (ChildProcess::ownRole() == "stack overflow")
        overflowTheStack();
    std::abort();
}

} // namespace

TEST(CrashReports, TellSignalAndCallsAndLeaveTheProgramsEndAsItWas) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "The sanitizer reports crashes itself.";
#endif
    const struct {
        const char* role;
        const char* signal;
        int number;
    } rows[] = {{"stack overflow", "SIGSEGV", SIGSEGV}, {"abort", "SIGABRT", SIGABRT}};
    for (const auto& [role, signal, number] : rows) {
        SCOPED_TRACE(role);
        const testing_support::ScratchFolder folder;
        const fs::path reports = folder.file("state/crashes");
        fs::create_directories(reports);
        for (int day = 1; day <= 8; ++day)
            std::ofstream(reports / ("2026-01-0" + std::to_string(day) + "T00:00:00Z-1.txt")) << "old";
        ChildProcess child(role, {"ANADROME_TEST_CRASHES=" + reports.string()});
        EXPECT_EQ(child.wait(), -number);

        std::vector<fs::path> paths(fs::directory_iterator(reports), {});
        std::ranges::sort(paths);
        ASSERT_EQ(paths.size(), 6U);
        EXPECT_EQ(paths.front().filename(), "2026-01-04T00:00:00Z-1.txt");
        EXPECT_EQ(fs::status(paths.back()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
        std::ifstream file(paths.back());
        const std::string report(std::istreambuf_iterator<char>(file), {});
        const QRegularExpression form(QStringLiteral("^Anadrome [0-9.]+\n20[0-9-]{8}T[0-9:]{8}Z\n") + signal +
                                      "\n[^\n]+\\(.*\\) ?\\[0x[0-9a-f]+\\]\n");
        EXPECT_TRUE(form.match(QString::fromStdString(report)).hasMatch()) << report;
        EXPECT_LT(report.size(), 64'000U);
    }
}

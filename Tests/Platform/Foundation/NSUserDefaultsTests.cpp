#include "Platform/Foundation/NSUserDefaults.h"

#include "Platform/Foundation/Print.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/ScratchFolder.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <vector>

using namespace anadrome;
using namespace std::string_literals;
using testing_support::ChildProcess;
namespace fs = std::filesystem;

namespace {

constexpr int laps = 20;

// What the child processes do. They have no event loop.

[[noreturn]] void setAndExit(NSUserDefaults& defaults) {
    defaults.setInteger(2, "last");
    std::exit(0);
}

[[noreturn]] void countUp(NSUserDefaults& defaults) {
    for (int lap = 1; lap <= laps; ++lap) {
        defaults.setInteger(lap, std::getenv("ANADROME_TEST_KEY"));
        if (!defaults.synchronize())
            std::exit(1);
    }
    std::exit(0);
}

[[noreturn]] void writeForEver(NSUserDefaults& defaults) {
    for (int lap = 1;; ++lap) {
        defaults.setInteger(lap, "first");
        defaults.setString(std::string(100'000, 'x'), "long");
        defaults.setInteger(lap, "second");
        defaults.synchronize();
        if (lap == 1) {
            std::puts("begun");
            std::fflush(stdout);
        }
    }
}

[[gnu::constructor]] void playRole() {
    const std::string_view role = ChildProcess::ownRole();
    if (role == "set and exit")
        setAndExit(NSUserDefaults::standardUserDefaults());
    if (role == "count up")
        countUp(NSUserDefaults::standardUserDefaults());
    if (role == "write for ever")
        writeForEver(NSUserDefaults::standardUserDefaults());
}

class NSUserDefaultsTests : public testing::Test {
protected:
    NSUserDefaultsTests() {
        setDebugSink([this](std::string_view) { ++m_debugLines; });
    }
    ~NSUserDefaultsTests() override { setDebugSink({}); }

    fs::path filePath() const { return m_folder.path() / "anadrome/preferences.ini"; }
    URL file() const { return URL::fileURLWithPath(filePath().string()); }
    /// As another start of the program would find it.
    NSUserDefaults reopened() const { return NSUserDefaults(file()); }
    std::string inThisFolder() const { return "XDG_CONFIG_HOME=" + m_folder.path().string(); }

    void writeFile(const std::string& text) const {
        fs::create_directories(filePath().parent_path());
        std::ofstream(filePath(), std::ios::binary) << text;
    }

    testing_support::ScratchFolder m_folder;
    std::atomic<int> m_debugLines = 0;
};

} // namespace

TEST_F(NSUserDefaultsTests, GiveEveryValueTheMeaningThatTheReaderAsksFor) {
    using Limits = std::numeric_limits<std::int64_t>;
    const struct {
        Value value;
        std::int64_t integer;
        bool boolean;
        std::optional<std::string> string;
    } table[] = {
        {0, 0, false, "0"},
        {Limits::max(), Limits::max(), true, "9223372036854775807"},
        {-2.75, -2, true, "-2.75"},
        {1e300, Limits::max(), true, "1e+300"},
        {true, 1, true, "1"},
        {"1", 1, true, "1"},
        {"YES", 0, true, "YES"},
        {"NO", 0, false, "NO"},
        {" 12 apples", 12, false, " 12 apples"},
        {"99999999999999999999", Limits::max(), false, "99999999999999999999"},
        {NSData(3), 0, false, std::nullopt},
        {Dictionary(), 0, false, std::nullopt},
    };
    NSUserDefaults defaults(file());
    for (const auto& row : table) {
        defaults.registerDefaults({{"key", row.value}});
        SCOPED_TRACE(row.string.value_or("another type"));
        EXPECT_EQ(defaults.integerForKey("key"), row.integer);
        EXPECT_EQ(defaults.boolForKey("key"), row.boolean);
        EXPECT_EQ(defaults.stringForKey("key"), row.string);
    }
}

TEST_F(NSUserDefaultsTests, PassOverStoredNumbersBeyondTheirLimitsButNotWhatThisProcessSets) {
    writeFile("[General]\nquality=3\n");
    NSUserDefaults defaults(file());
    defaults.registerDefaults({{"quality", 1}});
    EXPECT_EQ(defaults.integerForKey("quality"), 3);
    defaults.limitStoredInteger("quality", 0, 2);
    EXPECT_EQ(defaults.integerForKey("quality"), 1);
    NSUserDefaults other(file());
    other.setInteger(-1, "quality");
    EXPECT_TRUE(other.synchronize());
    defaults.setInteger(5, "another");
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("quality"), 1) << "read again with the store";
    defaults.setInteger(7, "quality");
    EXPECT_EQ(defaults.integerForKey("quality"), 7);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("quality"), 7);
    defaults.setInteger(2, "quality");
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("quality"), 2);
}

TEST_F(NSUserDefaultsTests, KeepTheTypesOfWhatIsStored) {
    const std::vector<std::string> strings{"5",     "true",       "-0.5", "a, b; \"c\"\n=[d]",
                                           "Grüße", "@Invalid()", ""};
    NSUserDefaults defaults(file());
    defaults.setBool(true, "boolean");
    defaults.setInteger(std::numeric_limits<std::int64_t>::min(), "integer");
    for (std::size_t i = 0; i < strings.size(); ++i)
        defaults.setString(strings[i], "s" + std::to_string(i));
    EXPECT_TRUE(defaults.synchronize());
    for (const NSUserDefaults& reader : {defaults, reopened()}) {
        EXPECT_EQ(reader.stringForKey("boolean"), "1");
        EXPECT_EQ(reader.integerForKey("integer"), std::numeric_limits<std::int64_t>::min());
        EXPECT_FALSE(reader.boolForKey("s0"));
        for (std::size_t i = 0; i < strings.size(); ++i)
            EXPECT_EQ(reader.stringForKey("s" + std::to_string(i)), strings[i]);
    }
}

TEST_F(NSUserDefaultsTests, ReadWhatPeopleTypeIntoTheFile) {
    writeFile("; mine\n[General]\nresolutionIndexKey = 2\nisSaveExifKey=true\nlist=a, b\n");
    const NSUserDefaults defaults = reopened();
    EXPECT_EQ(defaults.integerForKey("resolutionIndexKey"), 2);
    EXPECT_TRUE(defaults.boolForKey("isSaveExifKey"));
    EXPECT_EQ(defaults.stringForKey("list"), std::nullopt);
}

TEST_F(NSUserDefaultsTests, SearchRegisteredDefaultsLastAndNeverStoreThem) {
    NSUserDefaults defaults(file());
    defaults.registerDefaults({{"index", 1}, {"other", 5}});
    defaults.registerDefaults({{"other", 6}});
    defaults.setInteger(0, "index");
    EXPECT_EQ(defaults.integerForKey("other"), 6);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("index"), 0);
    EXPECT_EQ(reopened().integerForKey("other"), 0);

    defaults.removeObjectForKey("index");
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("index"), 1);
    EXPECT_EQ(reopened().stringForKey("index"), std::nullopt);
}

TEST_F(NSUserDefaultsTests, AreStoredSoonThoughNobodyAsksForIt) {
    NSUserDefaults(file()).setBool(true, "isSaveExifKey");
    EXPECT_TRUE(testing_support::runEventLoopUntil([&] { return reopened().boolForKey("isSaveExifKey"); }));
}

TEST_F(NSUserDefaultsTests, AreStoredAtTheEndOfTheProgramInAFolderOfTheUserAlone) {
    EXPECT_EQ(ChildProcess("set and exit", {inThisFolder()}).wait(), 0);
    EXPECT_EQ(reopened().integerForKey("last"), 2);
    struct stat status {};
    ASSERT_EQ(::stat(filePath().parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0u);
}

TEST_F(NSUserDefaultsTests, OfProcessesThatWriteTogetherAllStayAndAreSeenAtTheNextStoring) {
    NSUserDefaults defaults(file());
    EXPECT_EQ(defaults.integerForKey("a"), 0);
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (const char* key : {"a", "b", "c"})
        children.push_back(std::make_unique<ChildProcess>(
            "count up", std::vector{inThisFolder(), "ANADROME_TEST_KEY=" + std::string(key)}));
    for (const auto& child : children)
        EXPECT_EQ(child->wait(), 0);
    defaults.setInteger(1, "own");
    EXPECT_TRUE(defaults.synchronize());
    for (const char* key : {"a", "b", "c"})
        EXPECT_EQ(defaults.integerForKey(key), laps) << key;
}

TEST_F(NSUserDefaultsTests, AreWholeAfterAKillInTheMiddleOfAWrite) {
    for (int round = 0; round < 10; ++round) {
        ChildProcess child("write for ever", {inThisFolder()});
        ASSERT_EQ(child.readLine(), "begun");
        std::this_thread::sleep_for(std::chrono::milliseconds(3 * round));
        child.kill();
        const NSUserDefaults defaults = reopened();
        EXPECT_GT(defaults.integerForKey("first"), 0);
        EXPECT_EQ(defaults.stringForKey("long"), std::string(100'000, 'x'));
        EXPECT_EQ(m_debugLines, 0);
    }
    NSUserDefaults next = reopened();
    next.setInteger(-1, "first");
    EXPECT_TRUE(next.synchronize());
    EXPECT_EQ(reopened().integerForKey("first"), -1);
}

TEST_F(NSUserDefaultsTests, TakeADamagedFileForAnEmptyOneAndReplaceIt) {
    const struct {
        const char* what;
        std::function<void()> make;
    } table[] = {
        {"cut off", [&] { writeFile("[General]\nindex=3\nisSav"); }},
        {"garbage", [&] { writeFile("\x7f\x45LF\0\xff\xfe[[[\n\n=\0"s); }},
        {"a folder", [&] { fs::create_directory(filePath()); }},
        {"a pipe", [&] { ::mkfifo(filePath().c_str(), 0600); }},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        fs::remove_all(filePath().parent_path());
        fs::create_directories(filePath().parent_path());
        m_debugLines = 0;
        row.make();
        NSUserDefaults defaults(file());
        EXPECT_EQ(defaults.integerForKey("index"), 0);
        EXPECT_EQ(m_debugLines, 1);
        defaults.setInteger(4, "index");
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(reopened().integerForKey("index"), 4);
        EXPECT_TRUE(fs::exists(filePath().string() + ".damaged"));
    }
}

TEST_F(NSUserDefaultsTests, StayVisibleWhenTheyCantBeStoredAndAreTriedAgain) {
    const std::string text = "[General]\nindex=1\n";
    writeFile(text);
    NSUserDefaults defaults(file());
    {
        const testing_support::FileSizeLimit full(0);
        defaults.setInteger(3, "index");
        EXPECT_FALSE(defaults.synchronize() || defaults.synchronize());
    }
    EXPECT_EQ(defaults.integerForKey("index"), 3);
    EXPECT_GT(m_debugLines, 0);
    std::ostringstream kept;
    kept << std::ifstream(filePath(), std::ios::binary).rdbuf();
    EXPECT_EQ(kept.str(), text);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(reopened().integerForKey("index"), 3);
}

#include "App/AppDelegate.h"
#include "Models/VideoExportPresetHelper.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIApplication.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace anadrome {

using namespace testing_support;

namespace {

const struct Row {
    const char* name;
    const char* stored;
    std::int64_t quality;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
} rows[] = {
    {"IsInRange", "2", 2},   {"IsZero", "0", 0},         {"IsTooLarge", "3", 1},
    {"IsNegative", "-1", 1}, {"HasAFraction", "0.5", 1}, {"IsNoNumber", "high", 1},
};

/// Each test is to run in a process of its own: preferences are read once.
class StoredQualityTest : public testing::TestWithParam<Row> {
protected:
    StoredQualityTest() {
        Deployment::setCurrent({});
        std::filesystem::create_directories(m_folder.file("config/anadrome"));
        std::ofstream(m_folder.file("config/anadrome/preferences.ini"))
            << "[General]\nresolutionIndexKey=" << GetParam().stored << '\n';
    }

    const ScratchFolder m_folder;
    const Environment m_state{"XDG_STATE_HOME", m_folder.file("state")};
    const Environment m_configuration{"XDG_CONFIG_HOME", m_folder.file("config")};
};

} // namespace

TEST_P(StoredQualityTest, AlwaysNamesAPreset) {
    AppDelegate().didFinishLaunchingWithOptions(UIApplication::sharedApplication(), {});
    const std::int64_t quality = NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey");
    EXPECT_EQ(quality, GetParam().quality);
    EXPECT_FALSE(VideoExportPresetHelper::presetName(quality).empty());
}

INSTANTIATE_TEST_SUITE_P(That, StoredQualityTest, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace anadrome

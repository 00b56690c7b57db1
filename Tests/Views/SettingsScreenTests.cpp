#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIDevice.h"
#include "Tests/Views/ScreenTest.h"
#include "Views/Settings/SettingsViewController.h"

namespace anadrome {

namespace {

class SettingsScreenTest : public ScreenTest {
protected:
    SettingsScreenTest() {
        Deployment::setCurrent({.storeAddress = "https://store.example",
                                .storeIdentifier = "42",
                                .makerStorePage = "https://store.example/maker",
                                .makerWebSite = "https://maker.example",
                                .feedbackMailAddress = "help@maker.example"});
        m_stack->presentViewController(
            UIStoryboard::storyboardWithName("Settings").instantiateInitialViewController(), true);
        m_settings = std::dynamic_pointer_cast<SettingsViewController>(
            presented<UINavigationController>()->topViewController());
        m_table = m_settings->tableView();
        m_host.clear();
    }
    ~SettingsScreenTest() override { Deployment::setCurrent({}); }

    /// What the tap on a row leads to.
    Story tap(long section, long row) {
        m_host.clear();
        m_table->tapRow({section, row});
        EXPECT_FALSE(m_table->cells().at({section, row})->isSelected());
        return m_host.story();
    }
    /// What lies over the screen.
    template <class Controller>
    std::shared_ptr<Controller> shown() const {
        return std::dynamic_pointer_cast<Controller>(m_settings->presentedViewController());
    }

    std::shared_ptr<SettingsViewController> m_settings;
    std::shared_ptr<UITableView> m_table;
};

} // namespace

TEST_F(SettingsScreenTest, ListsItsRowsAnewAtEachAppearance) {
    const struct {
        NSIndexPath path;
        const char* key;
        const char* symbol;
    } rows[] = {{{0, 0}, "ShareToFriends", "square.and.arrow.up"},
                {{1, 0}, "BugReport", "ladybug"},
                {{1, 1}, "Contact", "envelope"},
                {{2, 0}, "MoreApps", "apps.iphone"},
                {{2, 1}, "DeveloperBlog", "newspaper"},
                {{3, 0}, "WriteReview", "pencil"}};
    ASSERT_EQ(m_table->cells().size(), std::size(rows));
    for (const auto& row : rows) {
        const UITableViewCell& cell = *m_table->cells().at(row.path);
        EXPECT_EQ(cell.textLabel()->text(), NSLocalizedString(row.key));
        EXPECT_EQ(cell.imageView()->image()->systemName(), row.symbol);
        EXPECT_EQ(cell.imageView()->image()->tintColor(), UIColor::labelColor());
    }
    EXPECT_EQ(m_table->rowHeight(), 44);
    const auto former = m_table->cells().at({0, 0});
    m_settings->beginAppearanceTransition(false, false);
    m_settings->beginAppearanceTransition(true, false);
    EXPECT_NE(m_table->cells().at({0, 0}), former);
    m_settings->navigationItem().rightBarButtonItem()->tap();
    EXPECT_EQ(m_host.story(), Story{"gone Settings"});
}

TEST_F(SettingsScreenTest, SharesAndOpensThePagesThatAreDeployed) {
    EXPECT_EQ(tap(0, 0), (Story{"event settings_share", "share sheet"}));
    EXPECT_EQ(shown<UIActivityViewController>()->activityItems(),
              (std::vector<UIActivityViewController::Item>{
                  std::string("Anadrome https://store.example/us/app/id42?mt=8")}));
    shown<UIActivityViewController>()->finish(std::nullopt, false);
    EXPECT_EQ(tap(2, 0), (Story{"event settings_more_apps", "open https://store.example/maker"}));
    EXPECT_EQ(tap(2, 1), (Story{"event settings_blog", "open https://maker.example"}));
    EXPECT_EQ(tap(3, 0), (Story{"event settings_review",
                                "open https://store.example/us/app/itunes-u/id42?action=write-review"}));
}

TEST_F(SettingsScreenTest, SaysThatAPageIsMissingWhereNoneIsDeployed) {
    Deployment::setCurrent({});
    const struct {
        NSIndexPath row;
        const char* event;
    } rows[] = {{{2, 0}, "settings_more_apps"}, {{2, 1}, "settings_blog"}, {{3, 0}, "settings_review"}};
    for (const auto& [row, event] : rows) {
        EXPECT_EQ(tap(row.section, row.row), Story{std::string("event ") + event});
        EXPECT_TRUE(waitFor("dialog " + NSLocalizedString("PageIsMissing"))) << event;
        ASSERT_TRUE(shown<UIAlertController>());
        shown<UIAlertController>()->chooseAction(0);
    }
}

TEST_F(SettingsScreenTest, WritesAMailOrSaysThatNoneCanBeWritten) {
    const char* subjects[] = {"Bug report - Anadrome", "Inquiry About Anadrome"};
    for (const long row : {0L, 1L}) {
        EXPECT_EQ(tap(1, row), (Story{"event settings_feedback_success", "mail"}));
        const auto mail = shown<MFMailComposeViewController>();
        EXPECT_EQ(mail->subject(), subjects[row]);
        EXPECT_EQ(mail->toRecipients(), std::vector<std::string>{"help@maker.example"});
        const UIDevice& device = UIDevice::currentDevice();
        EXPECT_EQ(mail->messageBody(), "\n\n" + device.name() + "\n" + device.systemVersion());
        EXPECT_FALSE(mail->isMessageBodyHTML());
        mail->finish(MFMailComposeResult::failed);
        EXPECT_EQ(m_host.story().back(), "gone mail");
        EXPECT_FALSE(m_settings->presentedViewController());
    }
    m_host.hasMailProgram = false;
    EXPECT_EQ(tap(1, 1),
              (Story{"event settings_feedback_failed", "dialog " + NSLocalizedString("FailedToOpenMail")}));
    EXPECT_EQ(m_host.lines(), Story{"送信できません"});
    EXPECT_EQ(shown<UIAlertController>()->actions().at(0).title, "OK");
}

} // namespace anadrome

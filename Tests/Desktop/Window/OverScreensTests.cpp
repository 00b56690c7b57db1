// What lies over the screens for a while: ads, the questions for consent and for a review, the share sheet,
// the HUD.

#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/Screens/ShareScreen.h"
#include "Desktop/System/Appearance.h"
#include "Models/VideoFileManager.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Tests/Desktop/Window/WindowTest.h"
#include "Views/Common/ViewHelper.h"

#include <QAccessible>
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QMimeData>
#include <filesystem>

namespace anadrome::desktop {

using OverScreensTest = WindowTest;

TEST_F(OverScreensTest, AFullScreenAdGivesWayOnlyAfterItsTimeAndThenToTheButtonInTheCorner) {
    present(
        std::make_shared<GADFullScreenAdViewController>(GADAdContent{.text = "An ad", .picture = "none"}));
    ASSERT_TRUE(over() && over()->kind() == "Ad");
    press(Qt::Key_Escape);
    EXPECT_TRUE(place("closeButton").isEmpty());
    EXPECT_TRUE(over());
    ASSERT_TRUE(waitUntil([&] { return !place("closeButton").isEmpty(); }));
    click("closeButton");
    EXPECT_TRUE(waitUntil([&] { return !over(); }));
}

TEST_F(OverScreensTest, TheQuestionForConsentStaysUntilItIsAnsweredPurposeByPurpose) {
    const auto form = std::make_shared<UMPConsentFormViewController>(
        UMPConsentQuestion{true, "May we?", {{"one", "The first"}, {"two", "The second"}}});
    std::optional<UMPConsentAnswers> given;
    form->setAnswered([&](UMPConsentAnswers answers) { given = std::move(answers); });
    present(form);
    press(Qt::Key_Escape);
    settle();
    ASSERT_TRUE(over() && over()->kind() == "Consent");
    EXPECT_EQ(place("consentAccept").size(), place("consentRefuse").size());
    click("consentManage");
    settle();
    click("consentPurpose1Switch");
    click("consentConfirm");
    ASSERT_TRUE(given);
    EXPECT_FALSE(given->isAllAccepted);
    EXPECT_EQ(given->byPurpose, (std::map<std::string, bool>{{"one", false}, {"two", true}}));
}

TEST_F(OverScreensTest, ACopiedFileOutlivesTheWorkFiles) {
    const URL movie = VideoFileManager::videosDirectory().appendingPathComponent("0a1b2c.mov");
    std::ofstream(movie.path()) << "the movie";
    present(std::make_shared<UIActivityViewController>(std::vector<UIActivityViewController::Item>{movie}));
    qobject_cast<ShareScreen*>(over())->copyFile();
    VideoFileManager::removeAllWorkFiles();
    EXPECT_FALSE(std::filesystem::exists(movie.path()));
    const QList<QUrl> copied = QGuiApplication::clipboard()->mimeData()->urls();
    ASSERT_EQ(copied.size(), 1);
    std::ifstream file(copied.front().toLocalFile().toStdString());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "the movie");
    file.close();
    TemporaryDirectory::remove();
    EXPECT_FALSE(QFile::exists(copied.front().toLocalFile())) << "it goes with the program";
}

TEST_F(OverScreensTest, ACopyIsSavedOverAnotherFileAndAFailureKeepsTheSheet) {
    write("movie.mov", "the movie");
    write("old.mov", "something older");
    const auto sheet = std::make_shared<UIActivityViewController>(
        std::vector<UIActivityViewController::Item>{URL::fileURLWithPath(path("movie.mov"))});
    std::optional<bool> completed;
    sheet->setCompletionHandler([&](const auto&, bool isCompleted) { completed = isCompleted; });
    present(sheet);
    auto& screen = *qobject_cast<ShareScreen*>(over());
    screen.saveCopy(fileUrl(path("nowhere/movie.mov")));
    ASSERT_TRUE(waitUntil([&] { return over()->kind() == "Alert"; }));
    settle();
    press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return over()->kind() == "ShareSheet"; }));
    EXPECT_FALSE(completed);
    screen.saveCopy(fileUrl(path("old.mov")));
    EXPECT_TRUE(waitUntil([&] { return completed.value_or(false); }));
    EXPECT_EQ(contentsOf("old.mov"), "the movie");
    EXPECT_EQ(contentsOf("movie.mov"), "the movie");
}

TEST_F(OverScreensTest, ABusyCardIsAsLightAsItsStyleInEveryLookAndShinesThroughIfItIsVibrant) {
    const std::shared_ptr<UIView> under =
        UIApplication::sharedApplication().windows().at(0)->rootViewController()->view();
    auto* appearance =
        m_app->engine().singletonInstance<Appearance*>(qmlTypeId("Anadrome", 1, 0, "Appearance"));
    // Below the sign and its words.
    const QPoint onCard(window().width() / 2, window().height() / 2 + 65);
    const auto lightness = [&](bool isDark) {
        appearance->setDark(isDark);
        settle();
        EXPECT_TRUE(host().hud()->isVisible());
        return window().grabWindow().pixelColor(onCard).lightnessF();
    };
    ViewHelper::showHud(under);
    const auto vibrant = std::pair(lightness(true), lightness(false));
    ViewHelper::hideHud();
    settle();
    ViewHelper::showSuccessHud(under);
    const auto plain = std::pair(lightness(true), lightness(false));
    ViewHelper::hideHud();
    settle();
    for (const auto& [onDark, onLight] : {vibrant, plain}) {
        EXPECT_GT(onDark, 0.7);
        EXPECT_GT(onLight, 0.7);
    }
    EXPECT_GT(vibrant.second - vibrant.first, 2 * (plain.second - plain.first));
    ViewHelper::showProgressHud("", under);
    EXPECT_LT(lightness(true), 0.3);
    EXPECT_LT(lightness(false), 0.3);
    ViewHelper::hideHud();
    settle();
}

/// The addresses that are given to the user's browser.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler("https", this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler("https"); }

    QStringList opened;

public Q_SLOTS:
    void open(const QUrl& address) { opened.append(address.toString()); }
};

class DeployedTest : public WindowTest {
protected:
    DeployedTest()
        : WindowTest(Deployment{.storeAddress = "https://store.example",
                                .storeIdentifier = "42",
                                .appStripIdentifiers = {"", "7", "", "9"}}) {}

    void saveAMovie() {
        openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 30}));
        click("createButton");
        ASSERT_TRUE(waitForScreen("Preview"));
        click("saveButton");
        ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "tick"; }));
    }
};

TEST_F(DeployedTest, TheStripHasTheAppsThatAreDeployed) {
    for (int app = 1; app <= 5; ++app)
        EXPECT_EQ(!place(QString("app%1Button").arg(app)).isEmpty(), app == 2 || app == 4) << app;
    EXPECT_LT(place("app2Button").left(), 60) << "the others leave no gap";
}

TEST_F(DeployedTest, AUserWhoSavedAMovieIsAskedForAReviewOnceTheTickHasGone) {
    const Browser browser;
    saveAMovie();
    EXPECT_FALSE(over());
    ASSERT_TRUE(waitUntil([&] { return over(); }));
    EXPECT_FALSE(host().hud()->isVisible());
    settle();
    ASSERT_EQ(over()->kind(), "Alert");
    const auto* choice = QAccessible::queryAccessibleInterface(window().activeFocusItem());
    EXPECT_EQ(choice->text(QAccessible::Name), qobject_cast<AlertScreen*>(over())->actions().at(0));
    press(Qt::Key_Escape);
    EXPECT_FALSE(over());
    settle();
    EXPECT_EQ(browser.opened, QStringList());

    // The sixth save asks again.
    NSUserDefaults::standardUserDefaults().setInteger(5, "doneCountKey");
    click("saveButton");
    ASSERT_TRUE(waitUntil([&] { return over(); }));
    settle();
    press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return !browser.opened.isEmpty(); }));
    EXPECT_EQ(browser.opened, QStringList("https://store.example/us/app/itunes-u/id42?action=write-review"));
    EXPECT_FALSE(over());
}

TEST_F(DeployedTest, AWindowThatWaitsForASavedMovieClosesWithoutAQuestion) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 30}));
    click("createButton");
    ASSERT_TRUE(waitForScreen("Preview"));
    click("saveButton");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
    window().close();
    EXPECT_TRUE(waitUntil([&] { return !window().isVisible(); }));
    EXPECT_FALSE(over());
}

} // namespace anadrome::desktop

#include "OverScreensTests.moc"

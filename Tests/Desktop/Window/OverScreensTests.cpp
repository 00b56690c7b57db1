// What lies over the screens for a while: ads, the question for consent, the share sheet.

#include "Desktop/Screens/ShareScreen.h"
#include "Models/VideoFileManager.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Tests/Desktop/Window/WindowTest.h"

#include <QClipboard>
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

} // namespace anadrome::desktop

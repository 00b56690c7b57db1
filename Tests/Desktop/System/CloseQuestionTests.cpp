#include "Desktop/Screens/ShareScreen.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Tests/Desktop/System/JobTest.h"
#include "Views/Common/ViewHelper.h"

#include <filesystem>
#include <sys/stat.h>

namespace anadrome::desktop {

/// Closes windows in the middle of a job, with a clip long enough for the question to be answered.
class CloseQuestionTest : public JobTest {
protected:
    bool isAsked() { return !place("choice1").isEmpty(); }
    void closeDuringJob() {
        startJob(900);
        window().close();
        ASSERT_TRUE(waitUntil([&] { return isAsked(); }));
        settle();
        ASSERT_TRUE(window().isVisible());
    }
};

TEST_F(CloseQuestionTest, AWindowWithoutAJobClosesAtOnce) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 30}));
    EXPECT_TRUE(window().close());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(CloseQuestionTest, KeepingOnLetsTheJobGoOnAndGivesTheKeyboardBack) {
    closeDuringJob();
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return !isAsked(); }));
    EXPECT_TRUE(host().hud()->isVisible());
    window().close();
    ASSERT_TRUE(waitUntil([&] { return isAsked(); }));
    press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return !isAsked(); })) << "keeping on is the first choice";
    ASSERT_TRUE(waitForScreen("Preview"));
    EXPECT_TRUE(window().isVisible());
    press(Qt::Key_Tab);
    EXPECT_TRUE(window().activeFocusItem() && window().activeFocusItem() != window().contentItem());
}

TEST_F(CloseQuestionTest, TheQuestionKeepsTheKeyboardWhileTheJobGoesFromStageToStage) {
    closeDuringJob();
    ViewHelper::hideHud();
    ASSERT_TRUE(waitUntil([&] { return !host().hud()->isVisible(); }));
    press(Qt::Key_Tab);
    ViewHelper::showHud(UIApplication::sharedApplication().windows().at(0)->rootViewController()->view());
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
    const auto& question = *window().property("closeQuestion").value<CloseQuestion*>();
    ASSERT_TRUE(question.isAsked());
    press(Qt::Key_Escape);
    EXPECT_FALSE(question.isAsked());
    waitForMovie();
}

TEST_F(CloseQuestionTest, TheQuestionGoesWithTheJob) {
    closeDuringJob();
    ASSERT_TRUE(waitForScreen("Preview"));
    EXPECT_FALSE(isAsked());
    EXPECT_TRUE(window().isVisible());
}

TEST_F(CloseQuestionTest, AMovieThatIsBeingSavedIsSavedBeforeTheWindowCloses) {
    startJob();
    ASSERT_TRUE(waitForMovie());
    click("saveButton");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
    window().close();
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(waitUntil([&] { return !window().isVisible(); }));
    const auto library = m_folder.path() / "Videos" / "Anadrome";
    ASSERT_EQ(std::distance(std::filesystem::directory_iterator(library), {}), 1);
    EXPECT_EQ(std::filesystem::directory_iterator(library)->path().extension(), ".mov");
}

TEST_F(CloseQuestionTest, ACopyIsWholeBeforeItsSheetOrTheWindowCloses) {
    // Is copied for as long as nobody writes to it.
    ASSERT_EQ(::mkfifo(path("movie.mov").c_str(), 0600), 0);
    present(std::make_shared<UIActivityViewController>(
        std::vector<UIActivityViewController::Item>{URL::fileURLWithPath(path("movie.mov"))}));
    qobject_cast<ShareScreen*>(over())->saveCopy(fileUrl(path("copy.mov")));
    settle();
    press(Qt::Key_Escape);
    window().close();
    settle();
    EXPECT_TRUE(over() && window().isVisible());
    write("movie.mov", "the movie");
    EXPECT_TRUE(waitUntil([&] { return !window().isVisible(); }));
    EXPECT_EQ(contentsOf("copy.mov"), "the movie");
}

TEST_F(CloseQuestionTest, GivingUpClosesTheWindow) {
    closeDuringJob();
    click("choice1");
    EXPECT_FALSE(window().isVisible());
    // As the program does, whose end stops what is still at work: nothing here outlives the job's threads.
    waitForMovie();
}

} // namespace anadrome::desktop

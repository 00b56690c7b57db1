#include "Models/VideoFileManager.h"
#include "Platform/Services/Deployment.h"
#include "Platform/StoreKit/SKStoreProductViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UniformTypeIdentifiers/UTType.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Views/ScreenTest.h"

#include <filesystem>
#include <fstream>

namespace anadrome {

namespace fs = std::filesystem;

namespace {

class TitleScreenTest : public ScreenTest {
protected:
    TitleScreenTest() {
        Deployment::setCurrent({});
        m_clip = clip("clip.mp4", {.width = 64, .height = 48, .frames = 6});
        openTitle();
    }
    ~TitleScreenTest() override { Deployment::setCurrent({}); }

    void openTitle() {
        m_stack = std::dynamic_pointer_cast<UINavigationController>(
            UIStoryboard::storyboardWithName("Main").instantiateInitialViewController());
        m_host.show(m_stack);
        settle();
        m_host.clear();
    }
    /// Lets everything happen that is on its way, the copying of a clip included.
    static void settle() {
        waitUntil([] { return false; }, std::chrono::milliseconds(100));
    }
    URL url(const std::string& file) const { return URL::fileURLWithPath(file); }
    /// Of the Edit screen on top; empty if there is none.
    URL clipOfEditScreen() const {
        const auto edit = std::dynamic_pointer_cast<EditViewController>(m_stack->topViewController());
        return edit ? *edit->inputUrl() : URL();
    }
    static std::size_t workFiles() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(VideoFileManager::videosDirectory().path()), {}));
    }

    std::string m_clip;
};

} // namespace

TEST_F(TitleScreenTest, OpensWithItsTextsTheStoredQualityAndAnEmptyWorkFolder) {
    for (const int quality : {2, 0}) {
        preferences().setInteger(quality, "resolutionIndexKey");
        std::ofstream(VideoFileManager::videosDirectory().appendingPathComponent("left.mov").path()) << "x";
        openTitle();
        EXPECT_EQ(titleViews().videoQualitySegmentedControl->selectedSegmentIndex(), quality);
        EXPECT_EQ(workFiles(), 0U);
    }
    EXPECT_EQ(titleViews().apps[4].label->text(), NSLocalizedString("MoreApp5"));
    EXPECT_EQ(titleViews().iCloudButton->titleLabel()->text(), NSLocalizedString("SelectFromFiles"));
    EXPECT_EQ(titleViews().videoQualitySegmentedControl->titleForSegmentAtIndex(2),
              NSLocalizedString("ResolutionHQ"));
    EXPECT_EQ(titleViews().shareAppButton->titleLabel()->minimumScaleFactor(), 0.5);
    EXPECT_TRUE(titleViews().cameraButton->layer().masksToBounds) << "its corners are round";
    titleViews().videoQualitySegmentedControl->tapSegment(1);
    EXPECT_EQ(preferences().integerForKey("resolutionIndexKey"), 1);
}

TEST_F(TitleScreenTest, TakesACopyOfARecordedClip) {
    titleViews().cameraButton->tap();
    const auto camera = presented<UIImagePickerController>();
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->mediaTypes(), std::vector<std::string>{"public.movie"});
    EXPECT_EQ(camera->sourceType(), UIImagePickerControllerSourceType::camera);
    EXPECT_EQ(camera->videoQuality(), UIImagePickerControllerQualityType::high);
    camera->finishPicking(url(m_clip));
    EXPECT_EQ(m_host.story(), (Story{"event title_camera", "camera", "gone camera", "push Edit"}));
    EXPECT_EQ(clipOfEditScreen().pathExtension(), "mp4");
    EXPECT_EQ(clipOfEditScreen().deletingLastPathComponent(), VideoFileManager::videosDirectory());
    EXPECT_EQ(fs::file_size(clipOfEditScreen().path()), fs::file_size(m_clip));
}

TEST_F(TitleScreenTest, SaysThatARecordingIsNowhereToBeFoundAndLeavesTheCameraUp) {
    titleViews().cameraButton->tap();
    const auto camera = presented<UIImagePickerController>();
    camera->finishPicking(std::nullopt);
    settle();
    const std::string message = "dialog " + NSLocalizedString("FailedToAccessAvasset");
    EXPECT_EQ(m_host.story(), (Story{"event title_camera", "camera", message}));
    EXPECT_TRUE(camera->presentingViewController());
    std::dynamic_pointer_cast<UIAlertController>(camera->presentedViewController())->chooseAction(0);
    camera->cancel();
    EXPECT_EQ(m_host.story().back(), "gone camera");
    EXPECT_EQ(workFiles(), 0U);
}

TEST_F(TitleScreenTest, TakesACopyOfAMovieFromTheLibraryAndPassesOverWhatIsNone) {
    std::ofstream(path("notes.txt")) << "no movie";
    fs::copy(m_clip, path("noextension"));
    const struct {
        std::vector<URL> picked;
        bool opens;
        std::string endOfName;
    } rows[] = {{{}, false, ""},
                {{url(path("notes.txt"))}, false, ""},
                {{url(m_clip), url(path("notes.txt"))}, true, ".mp4"},
                {{url(path("noextension"))}, true, "."}};
    for (const auto& row : rows) {
        titleViews().libraryButton->tap();
        const auto picker = presented<PHPickerViewController>();
        ASSERT_TRUE(picker);
        EXPECT_EQ(picker->configuration().filter, PHPickerFilter::videos);
        EXPECT_EQ(picker->configuration().selectionLimit, 1);
        EXPECT_EQ(picker->configuration().preferredAssetRepresentationMode,
                  PHPickerConfigurationAssetRepresentationMode::current);
        picker->finish(row.picked);
        EXPECT_FALSE(m_stack->presentedViewController());
        if (!row.opens) {
            settle();
            EXPECT_EQ(m_host.story(), (Story{"event title_library", "library", "gone library"}));
        } else {
            EXPECT_TRUE(waitFor("push Edit"));
            EXPECT_TRUE(clipOfEditScreen().path().ends_with(row.endOfName)) << clipOfEditScreen().path();
            EXPECT_EQ(workFiles(), 1U);
            m_stack->popToRootViewControllerAnimated(false);
            settle();
        }
        EXPECT_EQ(workFiles(), 0U);
        m_host.clear();
    }
}

TEST_F(TitleScreenTest, SaysWhyAMovieOfTheLibraryCannotBeRead) {
    titleViews().libraryButton->tap();
    presented<PHPickerViewController>()->finish({url(path("gone.mp4"))});
    EXPECT_TRUE(waitUntil([&] { return dialog() != nullptr; }));
    EXPECT_EQ(m_host.story().back(), "dialog “gone.mp4” couldn’t be read: No such file or directory.");
    EXPECT_EQ(clipOfEditScreen(), URL());
}

TEST_F(TitleScreenTest, SaysWhyAMovieCannotBeCopiedAndOpensNothing) {
    const std::string message =
        "dialog " + NSLocalizedString("The clip couldn’t be copied: %1.", {"File too large"});
    const testing_support::FileSizeLimit fullDisk(16);
    titleViews().cameraButton->tap();
    const auto camera = presented<UIImagePickerController>();
    camera->finishPicking(url(m_clip));
    EXPECT_TRUE(waitFor(message));
    EXPECT_TRUE(camera->presentingViewController()) << "the recording isn't lost";
    std::dynamic_pointer_cast<UIAlertController>(camera->presentedViewController())->chooseAction(0);
    camera->cancel();
    m_host.clear();
    titleViews().libraryButton->tap();
    presented<PHPickerViewController>()->finish({url(m_clip)});
    EXPECT_TRUE(waitFor(message));
    settle();
    EXPECT_EQ(clipOfEditScreen(), URL());
    EXPECT_EQ(workFiles(), 0U);
}

TEST_F(TitleScreenTest, UsesTheFirstOfThePickedFilesWhereItLies) {
    titleViews().iCloudButton->tap();
    presented<UIDocumentPickerViewController>()->finish({});
    EXPECT_EQ(m_host.story(), (Story{"event title_iCloud", "files", "gone files"}));
    titleViews().iCloudButton->tap();
    EXPECT_EQ(presented<UIDocumentPickerViewController>()->documentTypes(),
              std::vector<std::string>{kUTTypeMovie});
    presented<UIDocumentPickerViewController>()->finish({url(m_clip), url(path("other.mp4"))});
    EXPECT_EQ(clipOfEditScreen(), url(m_clip));
    EXPECT_EQ(workFiles(), 0U);
    m_stack->popToRootViewControllerAnimated(false);
    settle();
    EXPECT_TRUE(fs::exists(m_clip)) << "the sweep leaves the user's own file";
}

TEST_F(TitleScreenTest, SharesTheProgramWithItsPageIfThereIsOne) {
    using Items = std::vector<UIActivityViewController::Item>;
    const std::string page = "https://store.example/us/app/id42?mt=8";
    for (const bool isDeployed : {false, true}) {
        Deployment values;
        if (isDeployed)
            values = {.storeAddress = "https://store.example", .storeIdentifier = "42"};
        Deployment::setCurrent(values);
        m_host.clear();
        titleViews().shareAppButton->tap();
        EXPECT_EQ(m_host.story(), (Story{"event top_share", "share sheet"}));
        EXPECT_EQ(presented<UIActivityViewController>()->activityItems(),
                  isDeployed ? (Items{"Anadrome " + page, WebLink{page}}) : Items{std::string("Anadrome")});
        presented<UIActivityViewController>()->finish(std::nullopt, false);
    }
}

TEST_F(TitleScreenTest, TheStripHasTheAppsThatAreDeployedAndNoHeadingWithoutAny) {
    const struct {
        Deployment values;
        std::vector<int> shown;
    } rows[] = {{{}, {}},
                {{.appStripIdentifiers = {"1", "2", "3", "4", "5"}}, {}},
                {{.storeAddress = "https://store.example", .appStripIdentifiers = {"", "2"}}, {2}},
                {{.storeAddress = "https://store.example", .appStripIdentifiers = {"1", "2", "3", "4", "5"}},
                 {1, 2, 3, 4, 5}}};
    for (const auto& row : rows) {
        Deployment::setCurrent(row.values);
        openTitle();
        std::vector<int> shown;
        for (int app = 1; app <= 5; ++app) {
            const auto& [label, button] = titleViews().apps[static_cast<std::size_t>(app - 1)];
            const bool isShown = !button->isHidden();
            EXPECT_EQ(!label->isHidden(), isShown);
            if (isShown)
                shown.push_back(app);
        }
        EXPECT_EQ(shown, row.shown);
        EXPECT_EQ(titleViews().moreAppsLabel->isHidden(), row.shown.empty());
    }
}

TEST_F(TitleScreenTest, ShowsAnotherAppsPageAfterTheHudAndNothingIfItIsGone) {
    Deployment values{.storeAddress = "https://store.example"};
    values.appStripIdentifiers[4] = "99";
    Deployment::setCurrent(values);
    openTitle();
    Deployment::setCurrent({});
    titleViews().apps[4].button->tap();
    EXPECT_TRUE(waitFor("no hud"));
    settle();
    EXPECT_EQ(m_host.story(), (Story{"event other_app_4", "ring", "no hud"}));
    Deployment::setCurrent(values);
    for (int time = 0; time < 2; ++time) {
        m_host.clear();
        titleViews().apps[4].button->tap();
        EXPECT_TRUE(waitFor("store sheet"));
        EXPECT_EQ(m_host.story(), (Story{"event other_app_4", "ring", "no hud", "store sheet"}));
        EXPECT_EQ(presented<SKStoreProductViewController>()->productPage(),
                  "https://store.example/us/app/id99?mt=8");
        m_stack->dismissViewControllerAnimated(false);
    }
}

} // namespace anadrome

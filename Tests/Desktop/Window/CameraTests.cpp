#include "Desktop/Camera/CameraScreen.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Tests/Desktop/Window/WindowTest.h"
#include "Tests/Support/GeneratedDevices.h"
#include "Views/Edit/EditViewController.h"

#include <filesystem>

namespace anadrome::desktop {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

/// The camera screen over generated devices.
class CameraWindowTest : public WindowTest {
protected:
    ~CameraWindowTest() override { setCaptureDiscovery({}); }

    void openCamera(const AVCaptureDevices& devices) {
        setCaptureDiscovery([devices] { return devices; });
        click("cameraButton");
        ASSERT_TRUE(over() && over()->kind() == "Camera");
        settle();
    }
    CameraScreen& camera() { return *qobject_cast<CameraScreen*>(over()); }
    bool comesTo(CameraScreen::State state) {
        return waitUntil([&] { return camera().state() == state; }) && settle();
    }
    bool recordsFor(double seconds) {
        return waitUntil([&] { return camera().elapsed() >= seconds; });
    }
    /// The clips that lie around outside of the app's own folders.
    static int clipsLeft() {
        int count = 0;
        for (const auto& entry :
             fs::directory_iterator(NSFileManager::defaultManager().temporaryDirectory().path()))
            count += entry.path().extension() == ".mov";
        return count;
    }
};

} // namespace

TEST_F(CameraWindowTest, AClipIsRecordedTwiceAndTheSecondOneIsOpened) {
    openCamera({{generatedCamera("320x240")}, {generatedMicrophone()}});
    ASSERT_TRUE(comesTo(CameraScreen::Live));
    EXPECT_TRUE(place("switchCameraButton").isEmpty()) << "there is no other camera";
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    ASSERT_TRUE(recordsFor(1));
    press(Qt::Key_Return);
    ASSERT_TRUE(comesTo(CameraScreen::Recorded));
    const bool isPlaying = camera().clip()->player()->isPlaying();
    press(Qt::Key_Space);
    EXPECT_NE(camera().clip()->player()->isPlaying(), isPlaying) << "the keys outlive the button";
    click("retakeButton");
    ASSERT_TRUE(comesTo(CameraScreen::Live));
    EXPECT_EQ(clipsLeft(), 0);

    press(Qt::Key_Space);
    ASSERT_TRUE(recordsFor(1));
    click("recordButton");
    ASSERT_TRUE(comesTo(CameraScreen::Recorded));
    EXPECT_NEAR(camera().clip()->player()->duration(), 1, 0.35);
    EXPECT_NEAR(camera().clip()->pictures()->aspect(), 4.0 / 3, 0.01) << "it is shown";
    click("useButton");
    ASSERT_TRUE(waitForScreen("Edit"));
    EXPECT_EQ(over(), nullptr);
    EXPECT_EQ(clipsLeft(), 0);
    EXPECT_TRUE(waitUntil([&] { return editScreen().videoSeekBar->to() > 0.6; }));
}

TEST_F(CameraWindowTest, WithoutACameraAFileCanBeOpenedInstead) {
    openCamera({});
    ASSERT_TRUE(comesTo(CameraScreen::NoCamera));
    EXPECT_FALSE(place("cameraNotice").isEmpty());
    EXPECT_TRUE(place("recordButton").isEmpty());
    setCaptureDiscovery([] { return AVCaptureDevices{{generatedCamera()}, {}}; });
    click("tryAgainButton");
    ASSERT_TRUE(comesTo(CameraScreen::Live)) << "it was connected meanwhile";
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return !over(); }));
    settle();

    openCamera({});
    ASSERT_TRUE(comesTo(CameraScreen::NoCamera));
    click("openFileButton");
    ASSERT_TRUE(over());
    EXPECT_EQ(over()->kind(), "Files");
    EXPECT_EQ(host().presented()->count(), 1);
}

TEST_F(CameraWindowTest, WhatACameraRecordedBeforeItWentCanBeUsedAndOneThatIsNotThereIsTold) {
    openCamera({{generatedCamera("160x120", 2)}, {}});
    ASSERT_TRUE(comesTo(CameraScreen::Live));
    press(Qt::Key_Space);
    ASSERT_TRUE(comesTo(CameraScreen::Recorded));
    EXPECT_FALSE(camera().notice().isEmpty());

    // A movie that is nowhere to be found is told of over the picker, which stays.
    fs::remove(camera().clip()->file().path());
    auto* screen = over();
    click("useButton");
    ASSERT_TRUE(over() && over()->kind() == "Alert");
    settle();
    press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return over() == screen; }));
}

TEST_F(CameraWindowTest, TheOtherCameraIsSwitchedToAndEscapeNeverLosesAClipWithoutAQuestion) {
    openCamera({{generatedCamera("320x180"), generatedCamera("160x120")}, {}});
    ASSERT_TRUE(comesTo(CameraScreen::Live));
    EXPECT_NEAR(camera().live()->aspect(), 16.0 / 9, 0.01);
    click("switchCameraButton");
    ASSERT_TRUE(waitUntil([&] { return camera().live()->aspect() < 1.4; }));
    ASSERT_TRUE(comesTo(CameraScreen::Live));
    click("recordButton");
    ASSERT_TRUE(recordsFor(0.2));
    auto* camera = over();
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    ASSERT_TRUE(comesTo(CameraScreen::Recorded)) << "it ends, whatever comes before the file is whole";
    EXPECT_TRUE(place("fullScreenButton").isEmpty()) << "there is nothing that it could fill";

    const auto ask = [&] {
        press(Qt::Key_Escape);
        return over()->kind() == "Alert" && settle();
    };
    ASSERT_TRUE(ask());
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return over() == camera; }));
    EXPECT_EQ(clipsLeft(), 1);
    window().close();
    ASSERT_TRUE(over()->kind() == "Alert" && settle()) << "the window asks too";
    EXPECT_TRUE(window().isVisible());
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return over() == camera; }));
    ASSERT_TRUE(ask()) << "the camera has the keys again";
    click("choice1");
    EXPECT_TRUE(waitUntil([&] { return !over(); }));
    EXPECT_TRUE(waitUntil([&] { return clipsLeft() == 0; }));
    EXPECT_EQ(screen().kind(), "Title");
}

} // namespace anadrome::desktop

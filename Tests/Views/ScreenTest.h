#pragma once

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Views/StoryHost.h"
#include "Views/Common/Storyboards.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Edit/SpeedCurve.h"
#include "Views/Preview/PreviewViewController.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome {

/// The app's screens on a stack, with nobody to see them: preferences of this process alone, made clips.
class ScreenTest : public testing_support::ClipTest {
protected:
    using Story = StoryHost::Story;

    ScreenTest() {
        [[maybe_unused]] static const bool isReady = [] {
            NSUserDefaults::standardUserDefaults().keepInMemory();
            NSUserDefaults::standardUserDefaults().registerDefaults({{"resolutionIndexKey", 1}});
            registerStoryboards();
            Deployment::setCurrent({});
            return true;
        }();
        for (const char* key : {"resolutionIndexKey", "fileTypeIndexKey", "isSaveExifKey", "doneCountKey",
                                "reviewRequestTimes"})
            preferences().removeObjectForKey(key);
        m_host.show(m_stack);
    }

    ~ScreenTest() override {
        // An ad that is on its way holds its screen, which sweeps the work files as it goes.
        m_host.show(nullptr);
        m_stack.reset();
        QCoreApplication::processEvents();
    }

    static NSUserDefaults& preferences() { return NSUserDefaults::standardUserDefaults(); }

    /// Opens a screen as the one before it does: hands it its value, then pushes it.
    std::shared_ptr<EditViewController> openEdit(const std::string& clip) {
        const auto edit = instantiate<EditViewController>("Edit");
        edit->setInputUrl(URL::fileURLWithPath(clip));
        m_stack->pushViewController(edit, false);
        return edit;
    }
    std::shared_ptr<PreviewViewController> openPreview(const std::string& movie) {
        const auto preview = instantiate<PreviewViewController>("Preview");
        preview->setCompressedVideoUrl(URL::fileURLWithPath(movie));
        m_stack->pushViewController(preview, false);
        return preview;
    }

    /// The views of the screen on top, which has to be that one.
    const TitleViews& titleViews() const { return top<TitleViewController>().views(); }
    const EditViews& editViews() const { return top<EditViewController>().views(); }
    const PreviewViews& previewViews() const { return top<PreviewViewController>().views(); }

    static void slide(UISlider& slider, float value) {
        ASSERT_TRUE(slider.beginTracking());
        slider.trackTo(value);
        slider.endTracking();
    }
    /// Moves a speed slider without making a preview of the speed.
    static void setSpeed(UISlider& slider, double speed) {
        ASSERT_TRUE(slider.beginTracking());
        slider.trackTo(positionOfSpeed(speed));
        slider.cancelTracking();
    }

    template <typename Condition>
    static bool waitUntil(Condition holds, std::chrono::milliseconds patience = std::chrono::seconds(60)) {
        return testing_support::runEventLoopUntil(holds, patience);
    }
    bool waitFor(const std::string& event) {
        return waitUntil([&] { return m_host.tells(event); });
    }
    std::shared_ptr<UIAlertController> dialog() const {
        return std::dynamic_pointer_cast<UIAlertController>(
            m_stack->topViewController()->presentedViewController());
    }

    StoryHost m_host;
    std::shared_ptr<UINavigationController> m_stack =
        std::make_shared<UINavigationController>(std::make_shared<UIViewController>());

    /// What is shown over the stack.
    template <class Controller>
    std::shared_ptr<Controller> presented() const {
        return std::dynamic_pointer_cast<Controller>(m_stack->presentedViewController());
    }

private:
    template <class Controller>
    Controller& top() const {
        return dynamic_cast<Controller&>(*m_stack->topViewController());
    }
    template <class Controller>
    static std::shared_ptr<Controller> instantiate(const std::string& storyboard) {
        return std::dynamic_pointer_cast<Controller>(
            UIStoryboard::storyboardWithName(storyboard).instantiateInitialViewController());
    }
};

} // namespace anadrome

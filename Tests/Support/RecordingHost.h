#pragma once

#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIViewController.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"

#include <string>
#include <vector>

namespace anadrome::testing_support {

/// A front end that writes down what it is told, with a scene and a key window for the screens of a test.
/// Both go with it.
class RecordingHost : public UIHost {
public:
    RecordingHost() {
        UIApplication::sharedApplication().setHost(this);
        UIApplication::sharedApplication().connectScene(m_scene);
        m_window->makeKeyAndVisible();
    }
    ~RecordingHost() override {
        UIApplication::sharedApplication().disconnectScene(m_scene);
        UIApplication::sharedApplication().setHost(nullptr);
    }

    void show(const std::shared_ptr<UIViewController>& root) { m_window->setRootViewController(root); }
    const std::shared_ptr<UIWindow>& window() const { return m_window; }
    const std::shared_ptr<UIWindowScene>& scene() const { return m_scene; }

    struct Change {
        const UIView* view;
        double duration;
    };
    std::vector<std::string> calls;
    std::vector<Change> changes;

    void didPush(UINavigationController&, UIViewController&, bool animated) override {
        note("push", animated);
    }
    void didPop(UINavigationController&, const std::vector<std::shared_ptr<UIViewController>>& popped,
                bool animated) override {
        note("pop " + std::to_string(popped.size()), animated);
    }
    void didPresent(UIViewController&, bool animated) override { note("present", animated); }
    void didDismiss(UIViewController&, bool animated) override { note("dismiss", animated); }
    void viewChanged(UIView& view, double duration) override { changes.push_back({&view, duration}); }
    bool openURL(const std::string& address) override {
        calls.push_back("open " + address);
        return true;
    }
    void requestReview(UIWindowScene&) override { calls.push_back("review"); }

private:
    void note(const std::string& call, bool animated) {
        calls.push_back(call + (animated ? " animated" : ""));
    }

    const std::shared_ptr<UIWindowScene> m_scene = std::make_shared<UIWindowScene>();
    const std::shared_ptr<UIWindow> m_window = UIWindow::makeInScene(m_scene);
};

} // namespace anadrome::testing_support

#pragma once

#include "Platform/Foundation/Print.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Tests/Support/RecordingHost.h"
#include "Views/Common/ViewHelper.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace anadrome {

/// A front end that writes down, in one order, what a user sees and what is reported: the HUD as it comes and
/// goes, dialogs, screens, events and printed lines.
class StoryHost : public testing_support::RecordingHost {
public:
    StoryHost() {
        FIRAnalytics::setRecorder(
            [this](const std::string& name, const std::optional<Dictionary>&) { tell("event " + name); });
        setPrintSink([this](std::string_view line) { noteLine(std::string(line)); });
    }
    ~StoryHost() override {
        setPrintSink({});
        FIRAnalytics::setRecorder({});
    }

    using Story = std::vector<std::string>;
    const Story& story() const { return m_story; }
    void clear() {
        m_story.clear();
        percents.clear();
        const std::lock_guard lock(m_mutex);
        m_lines.clear();
    }
    bool tells(const std::string& what) const { return std::ranges::find(m_story, what) != m_story.end(); }
    std::vector<std::string> lines() const {
        const std::lock_guard lock(m_mutex);
        return m_lines;
    }

    bool hasMailProgram = true;
    /// What the pie has shown.
    std::vector<float> percents;
    /// Called whenever the pie moves, with its fraction.
    std::function<void(float)> onProgress;

    void viewChanged(UIView& view, double duration) override {
        RecordingHost::viewChanged(view, duration);
        const std::string hud = nameOfHud();
        if (hud != m_hud)
            tell(m_hud = hud);
        if (hud == "pie")
            noteProgress(ViewHelper::shared().hud().progress());
    }
    void didPush(UINavigationController&, UIViewController& controller, bool) override {
        tell("push " + nameOf(controller));
    }
    void didPop(UINavigationController&, const std::vector<std::shared_ptr<UIViewController>>& popped,
                bool) override {
        tell("pop " + std::to_string(popped.size()));
    }
    void didPresent(UIViewController& presented, bool) override { tell(nameOf(presented)); }
    void didDismiss(UIViewController& dismissed, bool) override { tell("gone " + nameOf(dismissed)); }
    bool openURL(const std::string& address) override {
        tell("open " + address);
        return true;
    }
    bool canSendMail() const override { return hasMailProgram; }
    void requestReview(UIWindowScene&) override { tell("review"); }

private:
    static std::string nameOf(UIViewController& controller);
    static std::string nameOfHud();

    void tell(std::string what) { m_story.push_back(std::move(what)); }
    void noteLine(std::string line) {
        const std::lock_guard lock(m_mutex);
        m_lines.push_back(std::move(line));
    }
    void noteProgress(float fraction) {
        if (!percents.empty() && percents.back() == fraction)
            return;
        percents.push_back(fraction);
        if (onProgress)
            onProgress(fraction);
    }

    Story m_story;
    std::string m_hud = "no hud";
    mutable std::mutex m_mutex;
    std::vector<std::string> m_lines;
};

} // namespace anadrome

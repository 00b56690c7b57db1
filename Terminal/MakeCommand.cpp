#include "Terminal/MakeCommand.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Platform/UIKit/UISwitch.h"
#include "Platform/UIKit/UIWindow.h"
#include "Terminal/FirstVideoTrack.h"
#include "Views/Common/Storyboards.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Edit/SpeedCurve.h"
#include "Views/Preview/PreviewViewController.h"

#include <array>

namespace anadrome::terminal {

namespace {

constexpr std::array contents{"backward", "backward, then forward", "forward, then backward"};

/// Nobody sees ads here, so no server is asked for them.
class NoAds final : public GADAdSource {
public:
    void fetch(const GADAdPlace&, const GADRequest&, Completion completion) override {
        DispatchQueue::main().async([completion = std::move(completion)] {
            completion(NSError(GADErrorDomain, GADErrorNoFill, "There are no ads in a terminal."));
        });
    }
};

template <class View>
View& viewNamed(const UIView& screen, const std::string& name) {
    for (const auto& view : screen.subviews())
        if (view->accessibilityIdentifier() == name)
            return dynamic_cast<View&>(*view);
    fatalError("The screen has no view named " + name);
}

/// Moves the slider to a speed, and takes the hand off without letting go as one does: that would make a
/// preview of the speed, which nobody sees here.
void slideTo(UISlider& slider, double speed) {
    if (!slider.beginTracking())
        return;
    slider.trackTo(positionOfSpeed(speed));
    slider.cancelTracking();
}

} // namespace

MakeCommand::MakeCommand(const MakeOptions& options) : Command(options), m_options(options) {}

void MakeCommand::run() {
    setPreferences();
    GADAdSource::setCurrent(std::make_shared<NoAds>());
    registerStoryboards();
    const auto stack = std::make_shared<UINavigationController>(std::make_shared<UIViewController>());
    window()->setRootViewController(stack);
    const auto edit = std::dynamic_pointer_cast<EditViewController>(
        UIStoryboard::storyboardWithName("Edit").instantiateInitialViewController());
    edit->setInputUrl(clip());
    stack->pushViewController(edit, false);
    setControls(*edit->view());
    viewNamed<UIButton>(*edit->view(), "createButton").tap();
}

void MakeCommand::setPreferences() const {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.keepInMemory();
    preferences.setInteger(m_options.quality, "resolutionIndexKey");
}

void MakeCommand::setControls(UIView& screen) const {
    viewNamed<UISegmentedControl>(screen, "outputTypeSegmentedControl").tapSegment(m_options.outputType);
    slideTo(viewNamed<UISlider>(screen, "reverseSpeedSlider"), m_options.reverseSpeed);
    slideTo(viewNamed<UISlider>(screen, "normalSpeedSlider"), m_options.normalSpeed);
    viewNamed<UISegmentedControl>(screen, "fileTypeSegmentedControl")
        .tapSegment(m_options.fileType == AVFileTypeQuickTimeMovie ? 0 : 1);
    if (m_options.keepMetadata)
        viewNamed<UISwitch>(screen, "exifSwitch").tap();
}

void MakeCommand::viewChanged(UIView&, double) {
    const JGProgressHUD& hud = ViewHelper::shared().hud();
    if (!hud.isVisible())
        return;
    if (std::dynamic_pointer_cast<JGProgressHUDPieIndicatorView>(hud.indicatorView()))
        progress().update(hud.progress());
    else
        progress().finishing();
}

void MakeCommand::didPresent(UIViewController& presented, bool) {
    if (const auto* dialog = dynamic_cast<UIAlertController*>(&presented))
        fail(dialog->message());
}

void MakeCommand::didPush(UINavigationController&, UIViewController& controller, bool) {
    const auto* preview = dynamic_cast<PreviewViewController*>(&controller);
    if (!preview)
        return;
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([this, movie = *preview->compressedVideoUrl()] { takeMovie(movie); });
}

void MakeCommand::takeMovie(const URL& movie) {
    const AVAssetTrackRef track = firstVideoTrack(movie);
    const std::int64_t frames = track ? track->sampleCount() : 0;
    if (std::optional<std::string> message = output().moveHere(movie))
        fail(std::move(*message));
    else
        succeed(frames, contents.at(static_cast<std::size_t>(m_options.outputType)));
}

} // namespace anadrome::terminal

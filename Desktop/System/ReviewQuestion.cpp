#include "Desktop/System/ReviewQuestion.h"

#include "Desktop/Screens/Hud.h"
#include "Desktop/Screens/ScreenList.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Views/Common/ViewHelper.h"

#include <QPointer>
#include <utility>

namespace anadrome::desktop {

namespace {

void openReviewPage(const std::weak_ptr<UIViewController>& screen) {
    const auto showFailure = [screen](bool isOpened) {
        const auto shown = screen.lock();
        if (shown && !isOpened)
            ViewHelper::showError(shown, NSLocalizedString("FailedToOpenElsewhere"));
    };
    UIApplication::sharedApplication().openURL(Deployment::current().reviewPage(), {}, showFailure);
}

} // namespace

ReviewQuestion::ReviewQuestion(const Hud& hud, const ScreenList& presented)
    : m_hud(hud), m_presented(presented) {
    connect(&hud, &Hud::changed, this, &ReviewQuestion::askIfVisible);
}

void ReviewQuestion::request(std::weak_ptr<UIViewController> screen) {
    // Behind what the caller has queued for the busy overlay: between a save and its tick there is none.
    DispatchQueue::main().async([self = QPointer(this), screen = std::move(screen)] {
        if (!self)
            return;
        self->m_screen = screen;
        self->askIfVisible();
    });
}

void ReviewQuestion::askIfVisible() {
    if (m_hud.isVisible())
        return;
    const auto screen = std::exchange(m_screen, {}).lock();
    if (!screen || m_presented.count() > 0)
        return;
    const auto dialog = std::make_shared<UIAlertController>(
        NSLocalizedString("ReviewTitle"), NSLocalizedString("ReviewMessage"), UIAlertControllerStyle::alert);
    dialog->addAction({NSLocalizedString("WriteReview"), UIAlertActionStyle::normal,
                       [weak = std::weak_ptr(screen)] { openReviewPage(weak); }});
    dialog->addAction({NSLocalizedString("NotNow"), UIAlertActionStyle::cancel, {}});
    screen->presentViewController(dialog, true);
}

} // namespace anadrome::desktop

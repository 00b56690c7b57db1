#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIViewController.h"
#include "Platform/UIKit/UIWindow.h"

#include <utility>

namespace anadrome {

namespace {

/// Holds a presented controller's view and keeps touches from all beneath.
class Curtain final : public UIView {
protected:
    bool coversSiblings() const override { return true; }
};

void callLater(UIViewController::Completion completion) {
    if (completion)
        DispatchQueue::main().async(std::move(completion));
}

} // namespace

UIViewController& UIViewController::outermost() {
    return const_cast<UIViewController&>(std::as_const(*this).outermost());
}

const UIViewController& UIViewController::outermost() const {
    const UIViewController* controller = this;
    while (controller->m_parent)
        controller = controller->m_parent;
    return *controller;
}

std::shared_ptr<UIViewController> UIViewController::presentedViewController() const {
    return outermost().m_presented;
}

std::shared_ptr<UIViewController> UIViewController::presentingViewController() const {
    const UIViewController* presenter = outermost().m_presenter;
    return presenter ? std::const_pointer_cast<UIViewController>(presenter->weak_from_this().lock())
                     : nullptr;
}

bool UIViewController::isInWindow() const {
    return m_view && m_view->window();
}

bool UIViewController::mayPresent(const UIViewController& controller) const {
    const char* reason = nullptr;
    if (!isInWindow())
        reason = "its view isn't in a window";
    else if (outermost().m_presented)
        reason = "it presents another already";
    else if (controller.m_presenter || controller.m_parent || controller.isInWindow())
        reason = "what is to be presented is on the screen already";
    if (reason)
        print(std::string("A controller can't present: ") + reason);
    return !reason;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated, Completion completion) {
    if (!controller)
        fatalError("UIViewController: asked to present nothing");
    if (!mayPresent(*controller))
        return;
    UIViewController& presenter = outermost();
    presenter.m_presented = controller;
    controller->m_presenter = &presenter;
    const std::shared_ptr<UIViewController> kept = controller;
    kept->beginAppearanceTransition(true, animated);
    kept->m_curtain = std::make_shared<Curtain>();
    kept->m_curtain->addSubview(kept->view());
    m_view->window()->addSubview(kept->m_curtain);
    kept->view()->layoutIfNeeded();
    kept->endAppearanceTransition();
    if (UIHost* host = UIApplication::sharedApplication().host())
        host->didPresent(*kept, animated);
    callLater(std::move(completion));
}

void UIViewController::dismissViewControllerAnimated(bool animated, Completion completion) {
    UIViewController& outer = outermost();
    UIViewController* presenter = outer.m_presented ? &outer : outer.m_presenter;
    if (!presenter)
        return;
    presenter->dismissPresented(animated);
    callLater(std::move(completion));
}

void UIViewController::dismissPresented(bool animated) {
    const std::shared_ptr<UIViewController> dismissed = m_presented;
    if (dismissed->m_presented)
        dismissed->dismissPresented(animated);
    dismissed->beginAppearanceTransition(false, animated);
    dismissed->m_curtain->removeFromSuperview();
    dismissed->view()->removeFromSuperview();
    dismissed->m_curtain.reset();
    dismissed->m_presenter = nullptr;
    m_presented.reset();
    dismissed->endAppearanceTransition();
    if (UIHost* host = UIApplication::sharedApplication().host())
        host->didDismiss(*dismissed, animated);
}

} // namespace anadrome

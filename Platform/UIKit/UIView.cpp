#include "Platform/UIKit/UIView.h"

#include "Platform/Foundation/NSTimer.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIGestureRecognizer.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIWindow.h"

#include <algorithm>

namespace anadrome {

namespace {

/// Views fainter than this get no touches.
constexpr CGFloat faintestTouched = 0.01;

/// Of the animation block that is running; 0 outside of one.
double& animationDuration() {
    static double duration = 0;
    return duration;
}

} // namespace

UIView::~UIView() {
    for (const auto& view : m_subviews)
        view->m_superview = nullptr;
}

std::shared_ptr<UIView> UIView::superview() const {
    return m_superview ? m_superview->weak_from_this().lock() : nullptr;
}

const UIView& UIView::root() const {
    const UIView* view = this;
    while (view->m_superview)
        view = view->m_superview;
    return *view;
}

std::shared_ptr<UIWindow> UIView::window() const {
    return std::dynamic_pointer_cast<UIWindow>(const_cast<UIView&>(root()).weak_from_this().lock());
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
    if (!view || &root() == view.get())
        fatalError("UIView: a view can't be put into itself, nor can none be put into one");
    const std::shared_ptr<UIView> kept = view;
    kept->removeFromSuperview();
    kept->m_superview = this;
    m_subviews.push_back(kept);
    m_needsLayout = true;
    noteChange();
}

void UIView::removeFromSuperview() {
    if (!m_superview)
        return;
    UIView& parent = *std::exchange(m_superview, nullptr);
    const auto place = std::find_if(parent.m_subviews.begin(), parent.m_subviews.end(),
                                    [this](const auto& view) { return view.get() == this; });
    const std::shared_ptr<UIView> self = std::move(*place);
    parent.m_subviews.erase(place);
    parent.m_needsLayout = true;
    parent.noteChange();
}

void UIView::layoutIfNeeded() {
    if (std::exchange(m_needsLayout, false))
        layoutSubviews();
    const auto views = m_subviews;
    for (const auto& view : views)
        view->layoutIfNeeded();
}

void UIView::addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
    recognizer->m_view = weak_from_this();
    m_gestureRecognizers.push_back(recognizer);
    noteChange();
}

void UIView::animateWithDuration(double duration, const std::function<void()>& animations,
                                 std::function<void(bool)> completion) {
    const double outer = std::exchange(animationDuration(), std::max(duration, 0.0));
    animations();
    animationDuration() = outer;
    if (completion)
        NSTimer::scheduledTimerWithTimeInterval(
            duration, false, [completion = std::move(completion)](NSTimer&) { completion(true); });
}

bool UIView::canBeTouched() const {
    for (const UIView* view = this; view; view = view->m_superview)
        if (view->m_isHidden || view->m_alpha < faintestTouched || !view->m_isUserInteractionEnabled ||
            view->isCoveredBySibling())
            return false;
    return dynamic_cast<const UIWindow*>(&root()) != nullptr;
}

bool UIView::isCoveredBySibling() const {
    if (!m_superview)
        return false;
    const auto& siblings = m_superview->m_subviews;
    return std::any_of(siblings.rbegin(),
                       std::find_if(siblings.rbegin(), siblings.rend(),
                                    [this](const auto& view) { return view.get() == this; }),
                       [](const auto& inFront) { return !inFront->isHidden() && inFront->coversSiblings(); });
}

void UIView::noteChange() {
    UIHost* host = UIApplication::sharedApplication().host();
    if (host && window())
        host->viewChanged(*this, animationDuration());
}

} // namespace anadrome

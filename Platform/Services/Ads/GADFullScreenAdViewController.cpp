#include "Platform/Services/Ads/GADFullScreenAdViewController.h"

#include "Platform/Dispatch/DispatchQueue.h"

#include <utility>

namespace anadrome {

void GADFullScreenAdViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    if (m_willAppear)
        m_willAppear();
}

void GADFullScreenAdViewController::viewDidDisappear(bool animated) {
    UIViewController::viewDidDisappear(animated);
    // Screens may only change again when this transition is over.
    if (auto dismissed = std::exchange(m_dismissed, nullptr))
        DispatchQueue::main().async(std::move(dismissed));
}

} // namespace anadrome

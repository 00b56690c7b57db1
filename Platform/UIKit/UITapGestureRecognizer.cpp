#include "Platform/UIKit/UITapGestureRecognizer.h"

#include "Platform/UIKit/UIView.h"

#include <utility>

namespace anadrome {

UITapGestureRecognizer::UITapGestureRecognizer(std::function<void()> action) : m_action(std::move(action)) {}

void UITapGestureRecognizer::tap() {
    const std::shared_ptr<UIView> tapped = view();
    if (tapped && isEnabled() && tapped->canBeTouched())
        m_action();
}

} // namespace anadrome

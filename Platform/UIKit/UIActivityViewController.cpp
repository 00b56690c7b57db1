#include "Platform/UIKit/UIActivityViewController.h"

namespace anadrome {

void UIActivityViewController::finish(const std::optional<std::string>& activity, bool completed) {
    const auto presenter = presentingViewController();
    if (!presenter)
        return;
    presenter->dismissViewControllerAnimated(true, [handler = m_completionHandler, activity, completed] {
        if (handler)
            handler(activity, completed);
    });
}

} // namespace anadrome

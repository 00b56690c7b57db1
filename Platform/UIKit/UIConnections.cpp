#include "Platform/UIKit/UIConnections.h"

#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

std::function<void()> UIConnections::actionNamed(const std::string& name) const {
    const auto found = m_actions.find(name);
    if (found == m_actions.end())
        fatalError("There is no action named " + name);
    return [controller = m_controller, function = found->second] {
        if (const auto alive = controller.lock())
            function();
    };
}

} // namespace anadrome

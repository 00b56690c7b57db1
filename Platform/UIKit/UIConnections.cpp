#include "Platform/UIKit/UIConnections.h"

#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

UIConnections::Action UIConnections::actionNamed(const std::string& name) const {
    const auto found = m_actions.find(name);
    if (found == m_actions.end())
        fatalError("There is no action named " + name);
    return [controller = m_controller, function = found->second](UIView& sender) {
        if (const auto alive = controller.lock())
            function(sender);
    };
}

} // namespace anadrome

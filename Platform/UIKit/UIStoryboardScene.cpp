#include "Platform/UIKit/UIStoryboardScene.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIConnections.h"

#include <set>

namespace anadrome {

std::shared_ptr<UIView> UIStoryboardScene::makeView(const UIConnections& connections) const {
    auto root = std::make_shared<UIView>();
    std::set<std::string> names;
    for (const Element& element : m_elements) {
        const std::shared_ptr<UIView> view = element.make();
        view->setAccessibilityIdentifier(element.name);
        connect(element, view, connections);
        root->addSubview(view);
        names.insert(element.name);
    }
    for (const auto& [name, setOutlet] : connections.outlets())
        if (!names.contains(name))
            fatalError("The storyboard has no view for the outlet " + name);
    return root;
}

void UIStoryboardScene::connect(const Element& element, const std::shared_ptr<UIView>& view,
                                const UIConnections& connections) {
    const auto outlet = connections.outlets().find(element.name);
    if (outlet != connections.outlets().end())
        outlet->second(view);
    if (element.wires.empty())
        return;
    const auto control = std::dynamic_pointer_cast<UIControl>(view);
    if (!control)
        fatalError("The view " + element.name + " is no control and sends no events");
    for (const Wire& wire : element.wires)
        control->addAction(wire.events, connections.actionNamed(wire.action));
}

} // namespace anadrome

#include "Platform/UIKit/UIStoryboardScene.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIConnections.h"
#include "Platform/UIKit/UIScreen.h"

#include <algorithm>
#include <set>

namespace anadrome {

namespace {

NSLayoutAnchor anchorIn(UIView& root, const UIStoryboardScene::Anchor& anchor) {
    if (anchor.view.empty())
        return {root, anchor.attribute};
    const auto view = std::ranges::find(root.subviews(), anchor.view,
                                        [](const auto& each) { return each->accessibilityIdentifier(); });
    if (view == root.subviews().end())
        fatalError("The storyboard has no view " + anchor.view + " for a constraint");
    return {**view, anchor.attribute};
}

} // namespace

std::shared_ptr<UIView> UIStoryboardScene::makeView(const UIConnections& connections) const {
    auto root = std::make_shared<UIView>();
    root->setFrame(UIScreen::mainScreen().bounds());
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
    addConstraints(*root, connections);
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
        control->addAction(wire.events, [action = connections.actionNamed(wire.action), &sender = *control] {
            action(sender);
        });
}

void UIStoryboardScene::addConstraints(UIView& root, const UIConnections& connections) const {
    std::set<std::string> names;
    for (const auto& [name, first, second, constant] : m_constraints) {
        const auto constraint = anchorIn(root, first).constraintEqualToAnchor(anchorIn(root, second));
        constraint->setConstant(constant);
        constraint->setActive(true);
        const auto outlet = connections.constraintOutlets().find(name);
        if (outlet != connections.constraintOutlets().end())
            *outlet->second = constraint;
        names.insert(name);
    }
    for (const auto& [name, outlet] : connections.constraintOutlets())
        if (!names.contains(name))
            fatalError("The storyboard has no constraint for the outlet " + name);
}

} // namespace anadrome

#pragma once

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIView.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace anadrome {

class NSLayoutConstraint;
class UIViewController;

/// The outlets and actions of a controller, by their names; a storyboard scene sets and wires them.
class UIConnections {
public:
    using Action = std::function<void(UIView& sender)>;

    /// Declared outlets and actions refer to the controller's own fields and functions.
    explicit UIConnections(std::weak_ptr<UIViewController> controller)
        : m_controller(std::move(controller)) {}

    /// A view of another kind than the outlet's is fatal.
    template <class View>
    void outlet(const std::string& name, std::weak_ptr<View>& outlet) {
        m_outlets[name] = [name, &outlet](const std::shared_ptr<UIView>& view) {
            const auto fitting = std::dynamic_pointer_cast<View>(view);
            if (!fitting)
                fatalError("The view for the outlet " + name + " is of another kind");
            outlet = fitting;
        };
    }
    void outlet(const std::string& name, std::weak_ptr<NSLayoutConstraint>& outlet) {
        m_constraintOutlets[name] = &outlet;
    }
    void action(const std::string& name, std::function<void()> function) {
        m_actions[name] = [function = std::move(function)](UIView&) { function(); };
    }
    /// An action that looks at the view which sent it.
    void actionOfSender(const std::string& name, Action function) { m_actions[name] = std::move(function); }

    using SetOutlet = std::function<void(const std::shared_ptr<UIView>& view)>;
    const std::map<std::string, SetOutlet>& outlets() const { return m_outlets; }

    const std::map<std::string, std::weak_ptr<NSLayoutConstraint>*>& constraintOutlets() const {
        return m_constraintOutlets;
    }

    /// The action of that name, which does nothing once the controller is gone. An unknown name is fatal.
    Action actionNamed(const std::string& name) const;

private:
    std::weak_ptr<UIViewController> m_controller;
    std::map<std::string, SetOutlet> m_outlets;
    std::map<std::string, Action> m_actions;
    std::map<std::string, std::weak_ptr<NSLayoutConstraint>*> m_constraintOutlets;
};

} // namespace anadrome

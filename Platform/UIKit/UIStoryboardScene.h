#pragma once

#include "Platform/Dispatch/MainThread.h"
#include "Platform/UIKit/UIControl.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace anadrome {

class UIConnections;
class UIViewController;

/// A screen as a storyboard describes it: its controller, its views with their first values, and which event
/// of a control calls which action. Where the views lie is the front end's.
class UIStoryboardScene {
public:
    /// An event, or several, and the name of the action that it calls.
    struct Wire {
        UIControlEvents events;
        std::string action;
    };

    /// The controller is destroyed on the main thread, whichever thread lets go of it last.
    template <class Controller>
    static UIStoryboardScene ofController() {
        UIStoryboardScene scene;
        scene.m_makeController = [] {
            return std::shared_ptr<Controller>(new Controller, MainThreadDeleter<Controller>());
        };
        return scene;
    }

    /// Adds a view in front of those before. It becomes the outlet of that name, if the controller has one,
    /// and has the name as its accessibilityIdentifier. Only controls have wires.
    template <class View>
    UIStoryboardScene& add(std::string name, std::function<void(View& view)> prepare = {},
                           std::vector<Wire> wires = {}) {
        m_elements.push_back({std::move(name),
                              [prepare = std::move(prepare)]() -> std::shared_ptr<UIView> {
                                  auto view = std::make_shared<View>();
                                  if (prepare)
                                      prepare(*view);
                                  return view;
                              },
                              std::move(wires)});
        return *this;
    }

    /// The controller comes as the root of a navigation stack.
    UIStoryboardScene& inNavigationController() {
        m_isInNavigationController = true;
        return *this;
    }

    /// A measure of a view by the view's name; of the whole screen without one.
    struct Anchor {
        std::string view;
        NSLayoutAttribute attribute;
    };
    /// Adds the active constraint first = second + constant between views that were added. It becomes the
    /// outlet of that name, if the controller has one.
    UIStoryboardScene& addConstraint(std::string name, Anchor first, Anchor second, CGFloat constant) {
        m_constraints.push_back({std::move(name), std::move(first), std::move(second), constant});
        return *this;
    }

    std::shared_ptr<UIViewController> makeController() const { return m_makeController(); }
    bool isInNavigationController() const { return m_isInNavigationController; }
    /// A new view tree, connected. An outlet without a view is fatal, as is a wire to an unknown action.
    std::shared_ptr<UIView> makeView(const UIConnections& connections) const;

private:
    struct Element {
        std::string name;
        std::function<std::shared_ptr<UIView>()> make;
        std::vector<Wire> wires;
    };

    struct Constraint {
        std::string name;
        Anchor first;
        Anchor second;
        CGFloat constant;
    };

    static void connect(const Element& element, const std::shared_ptr<UIView>& view,
                        const UIConnections& connections);
    void addConstraints(UIView& root, const UIConnections& connections) const;

    std::function<std::shared_ptr<UIViewController>()> m_makeController;
    std::vector<Element> m_elements;
    bool m_isInNavigationController = false;
    std::vector<Constraint> m_constraints;
};

} // namespace anadrome

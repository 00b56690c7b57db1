#pragma once

#include "Desktop/Items/ViewItem.h"
#include "Platform/UIKit/UIViewController.h"

#include <vector>

namespace anadrome::desktop {

/// What QML sees of one controller; in derived classes its views, each as an item. Holds the controller
/// weakly. Main thread only.
class ShownScreen : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// Names the page: qml/screens/KIND.qml.
    Q_PROPERTY(QString kind READ kind CONSTANT)

public:
    ShownScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
        : QObject(parent), m_controller(controller), m_kind(std::move(kind)) {}

    const QString& kind() const { return m_kind; }

    /// The user goes away from what lies over other screens without a choice.
    Q_INVOKABLE virtual void close();

    bool isOf(const UIViewController& controller) const { return m_controller.lock().get() == &controller; }
    /// Passes a change on to the item of that view, or of the nearest around it that has one.
    void noteChange(const UIView& view, double seconds);
    /// The place that the screen has in the window, in points.
    void setSize(double width, double height) const;

protected:
    /// Null once the controller is gone.
    template <class Controller>
    std::shared_ptr<Controller> controllerAs() const {
        return std::dynamic_pointer_cast<Controller>(m_controller.lock());
    }

    /// Makes the item of a view, which hears of the view's changes. Owned by the screen.
    template <class Item, class View>
    Item* add(const std::shared_ptr<View>& view) {
        auto* item = new Item(view, this);
        m_items.push_back(item);
        return item;
    }

private:
    const std::weak_ptr<UIViewController> m_controller;
    const QString m_kind;
    std::vector<ViewItem*> m_items;
};

} // namespace anadrome::desktop

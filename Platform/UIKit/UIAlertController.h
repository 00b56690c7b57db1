#pragma once

#include "Platform/UIKit/UIViewController.h"

#include <string>

namespace anadrome {

enum class UIAlertControllerStyle { actionSheet = 0, alert = 1 };
enum class UIAlertActionStyle { normal = 0, cancel = 1, destructive = 2 };

/// One choice of a dialog.
struct UIAlertAction {
    std::string title;
    UIAlertActionStyle style = UIAlertActionStyle::normal;
    std::function<void()> handler;
};

/// A dialog with a title, a sentence and choices.
class UIAlertController : public UIViewController {
public:
    UIAlertController(std::string title, std::string message, UIAlertControllerStyle style)
        : m_title(std::move(title)), m_message(std::move(message)), m_style(style) {}

    const std::string& title() const { return m_title; }
    const std::string& message() const { return m_message; }
    UIAlertControllerStyle preferredStyle() const { return m_style; }
    const std::vector<UIAlertAction>& actions() const { return m_actions; }
    /// A second action of the cancel style is fatal.
    void addAction(UIAlertAction action);

    /// The user's choice: the dialog goes, then the action's handler is called on the main queue. Without
    /// effect while the dialog isn't presented.
    void chooseAction(std::size_t index);

private:
    const std::string m_title;
    const std::string m_message;
    const UIAlertControllerStyle m_style;
    std::vector<UIAlertAction> m_actions;
};

} // namespace anadrome

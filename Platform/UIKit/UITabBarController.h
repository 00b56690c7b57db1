#pragma once

#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

/// Screens side by side, of which the selected one shows.
class UITabBarController : public UIViewController {
public:
    /// The first is selected. At least one.
    explicit UITabBarController(const std::vector<std::shared_ptr<UIViewController>>& controllers);

    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const {
        return childViewControllers();
    }
    std::size_t selectedIndex() const { return m_selectedIndex; }
    /// An index outside the list is fatal.
    void setSelectedIndex(std::size_t index);

protected:
    void viewDidLoad() override;
    std::vector<std::shared_ptr<UIViewController>> shownChildren() const override;

private:
    std::size_t m_selectedIndex = 0;
};

} // namespace anadrome

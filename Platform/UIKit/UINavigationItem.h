#pragma once

#include "Platform/UIKit/UIBarButtonItem.h"

#include <memory>

namespace anadrome {

/// What a stack's bar shows for one screen.
class UINavigationItem {
public:
    /// Null if there is none.
    const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const { return m_rightBarButtonItem; }
    void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item) {
        m_rightBarButtonItem = std::move(item);
    }

private:
    std::shared_ptr<UIBarButtonItem> m_rightBarButtonItem;
};

} // namespace anadrome

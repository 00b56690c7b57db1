#pragma once

#include "Platform/UIKit/UIImageView.h"
#include "Platform/UIKit/UILabel.h"

namespace anadrome {

/// A row of a table: an image and a line of text.
class UITableViewCell : public UIView {
public:
    UITableViewCell() {
        addSubview(m_imageView);
        addSubview(m_textLabel);
    }

    const std::shared_ptr<UIImageView>& imageView() const { return m_imageView; }
    /// Never null in this kind of cell.
    const std::shared_ptr<UILabel>& textLabel() const { return m_textLabel; }

    bool isSelected() const { return m_isSelected; }
    void setSelected(bool isSelected) { change(m_isSelected, isSelected); }

private:
    const std::shared_ptr<UIImageView> m_imageView = std::make_shared<UIImageView>();
    const std::shared_ptr<UILabel> m_textLabel = std::make_shared<UILabel>();
    bool m_isSelected = false;
};

} // namespace anadrome

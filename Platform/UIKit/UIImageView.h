#pragma once

#include "Platform/UIKit/UIImage.h"
#include "Platform/UIKit/UIView.h"

namespace anadrome {

class UIImageView : public UIView {
public:
    UIImageView() { setUserInteractionEnabled(false); }

    /// Null shows nothing.
    const UIImageRef& image() const { return m_image; }
    void setImage(UIImageRef image) { change(m_image, std::move(image)); }

private:
    UIImageRef m_image;
};

} // namespace anadrome

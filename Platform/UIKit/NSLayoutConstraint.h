#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"

#include <memory>
#include <vector>

namespace anadrome {

class NSLayoutConstraint;
class UIView;

enum class NSLayoutAttribute { bottom, width, height, centerX, centerY };

/// One measure of a view, to be tied to another's.
class NSLayoutAnchor {
public:
    NSLayoutAnchor(UIView& view, NSLayoutAttribute attribute) : m_view(view), m_attribute(attribute) {}

    /// This measure equals the other; not yet active. Both views are held weakly.
    std::shared_ptr<NSLayoutConstraint> constraintEqualToAnchor(const NSLayoutAnchor& other) const;

private:
    friend class NSLayoutConstraint;

    UIView& m_view;
    NSLayoutAttribute m_attribute;
};

/// A wish on the layout: first measure = multiplier × second measure + constant, in points. It only records
/// what is asked for; a front end places the views. Main thread only.
class NSLayoutConstraint : public std::enable_shared_from_this<NSLayoutConstraint> {
public:
    NSLayoutConstraint(const NSLayoutAnchor& first, const NSLayoutAnchor& second);

    /// Null once the view is gone.
    std::shared_ptr<UIView> firstItem() const { return m_firstItem.lock(); }
    NSLayoutAttribute firstAttribute() const { return m_firstAttribute; }
    std::shared_ptr<UIView> secondItem() const { return m_secondItem.lock(); }
    NSLayoutAttribute secondAttribute() const { return m_secondAttribute; }
    CGFloat multiplier() const { return 1; }
    CGFloat constant() const { return m_constant; }
    void setConstant(CGFloat constant);

    static void activateConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints);

    bool isActive() const { return !m_owner.expired(); }
    /// An active constraint belongs to the nearest view that holds both items; to have none is fatal.
    void setActive(bool isActive);

private:
    std::shared_ptr<UIView> commonAncestor() const;

    const std::weak_ptr<UIView> m_firstItem;
    const NSLayoutAttribute m_firstAttribute;
    const std::weak_ptr<UIView> m_secondItem;
    const NSLayoutAttribute m_secondAttribute;
    CGFloat m_constant = 0;
    std::weak_ptr<UIView> m_owner;
};

} // namespace anadrome

#include "Platform/UIKit/NSLayoutConstraint.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIView.h"

namespace anadrome {

std::shared_ptr<NSLayoutConstraint>
NSLayoutAnchor::constraintEqualToAnchor(const NSLayoutAnchor& other) const {
    return std::make_shared<NSLayoutConstraint>(*this, other);
}

NSLayoutConstraint::NSLayoutConstraint(const NSLayoutAnchor& first, const NSLayoutAnchor& second)
    : m_firstItem(first.m_view.weak_from_this()), m_firstAttribute(first.m_attribute),
      m_secondItem(second.m_view.weak_from_this()), m_secondAttribute(second.m_attribute) {}

void NSLayoutConstraint::setConstant(CGFloat constant) {
    m_constant = constant;
    if (const auto owner = m_owner.lock())
        owner->noteChange();
}

void NSLayoutConstraint::activateConstraints(
    const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints) {
    for (const auto& constraint : constraints)
        constraint->setActive(true);
}

void NSLayoutConstraint::setActive(bool isActive) {
    if (isActive == this->isActive())
        return;
    const std::shared_ptr<NSLayoutConstraint> self = shared_from_this();
    const std::shared_ptr<UIView> owner = isActive ? commonAncestor() : m_owner.lock();
    if (!owner)
        fatalError("NSLayoutConstraint: its views are in no common view");
    if (isActive) {
        m_owner = owner;
        owner->m_constraints.push_back(self);
    } else {
        m_owner.reset();
        std::erase(owner->m_constraints, self);
    }
    owner->noteChange();
}

std::shared_ptr<UIView> NSLayoutConstraint::commonAncestor() const {
    for (auto ancestor = firstItem(); ancestor; ancestor = ancestor->superview())
        for (auto other = secondItem(); other; other = other->superview())
            if (other == ancestor)
                return ancestor;
    return nullptr;
}

} // namespace anadrome

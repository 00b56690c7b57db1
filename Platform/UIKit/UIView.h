#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/UIKit/CALayer.h"
#include "Platform/UIKit/NSLayoutConstraint.h"
#include "Platform/UIKit/UILayoutGuide.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace anadrome {

class UIGestureRecognizer;
class UIWindow;

/// A node of what a screen shows, as values; a front end draws it and hears of changes through its UIHost.
/// Made by std::make_shared; a view owns its subviews. Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
public:
    UIView() = default;
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;
    virtual ~UIView();

    /// Where the view lies in its superview, in points. Set by front ends, which so aren't told of it; a view
    /// that a storyboard loads has the screen's size at first.
    const CGRect& frame() const { return m_frame; }
    void setFrame(const CGRect& frame) { m_frame = frame; }

    CGFloat alpha() const { return m_alpha; }
    void setAlpha(CGFloat alpha) { change(m_alpha, alpha); }
    bool isHidden() const { return m_isHidden; }
    void setHidden(bool isHidden) { change(m_isHidden, isHidden); }
    bool isUserInteractionEnabled() const { return m_isUserInteractionEnabled; }
    void setUserInteractionEnabled(bool isEnabled) { change(m_isUserInteractionEnabled, isEnabled); }

    const CALayer& layer() const { return m_layer; }
    void setLayer(const CALayer& layer) { change(m_layer, layer); }

    /// The rearmost first.
    const std::vector<std::shared_ptr<UIView>>& subviews() const { return m_subviews; }
    std::shared_ptr<UIView> superview() const;
    /// The window at the root of the tree; null if there is none.
    std::shared_ptr<UIWindow> window() const;
    /// Puts a view in front of the other subviews and takes it out of where it was.
    void addSubview(const std::shared_ptr<UIView>& view);
    /// Adds a new view of that kind.
    template <class View>
    std::shared_ptr<View> addNew() {
        auto view = std::make_shared<View>();
        addSubview(view);
        return view;
    }
    void removeFromSuperview();

    void setNeedsLayout() { m_needsLayout = true; }
    /// Lays out this view and those in it, as far as they need it.
    void layoutIfNeeded();

    const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers() const {
        return m_gestureRecognizers;
    }
    void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);

    /// Whether the view keeps its place without constraints.
    bool translatesAutoresizingMaskIntoConstraints() const { return m_keepsPlace; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) { change(m_keepsPlace, translates); }
    UILayoutGuide safeAreaLayoutGuide() { return UILayoutGuide(*this); }
    NSLayoutAnchor bottomAnchor() { return {*this, NSLayoutAttribute::bottom}; }
    NSLayoutAnchor centerXAnchor() { return {*this, NSLayoutAttribute::centerX}; }
    NSLayoutAnchor centerYAnchor() { return {*this, NSLayoutAttribute::centerY}; }
    NSLayoutAnchor widthAnchor() { return {*this, NSLayoutAttribute::width}; }
    NSLayoutAnchor heightAnchor() { return {*this, NSLayoutAttribute::height}; }
    /// The active constraints among this view and those in it.
    const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const { return m_constraints; }

    /// Runs the first block at once: properties that it changes have their new value afterwards, and front
    /// ends hear that the change takes the duration, in seconds. The completion, if given, follows after that
    /// time on the main thread.
    static void animateWithDuration(double duration, const std::function<void()>& animations,
                                    std::function<void(bool finished)> completion = {});

    /// Whether a user's touch would reach this view: it and all above it can be seen and take part, they hang
    /// in a window, and nothing lies over them that takes the touches.
    bool canBeTouched() const;

protected:
    virtual void layoutSubviews() {}
    /// Whether the view takes all touches meant for its siblings behind it.
    virtual bool coversSiblings() const { return false; }

    /// Sets a property and tells of it, if it differs.
    template <typename Value>
    void change(Value& property, Value value) {
        if (property == value)
            return;
        property = std::move(value);
        noteChange();
    }
    /// Tells the host of a change, if the view is in a window.
    void noteChange();

private:
    friend class NSLayoutConstraint;

    const UIView& root() const;
    bool isCoveredBySibling() const;

    CGRect m_frame;
    CALayer m_layer;
    CGFloat m_alpha = 1;
    bool m_isHidden = false;
    bool m_isUserInteractionEnabled = true;
    bool m_needsLayout = true;
    bool m_keepsPlace = true;
    std::vector<std::shared_ptr<UIView>> m_subviews;
    /// Set by the superview as long as it owns this view.
    UIView* m_superview = nullptr;
    std::vector<std::shared_ptr<UIGestureRecognizer>> m_gestureRecognizers;
    std::vector<std::shared_ptr<NSLayoutConstraint>> m_constraints;
};

} // namespace anadrome

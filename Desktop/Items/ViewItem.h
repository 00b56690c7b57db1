#pragma once

#include "Platform/UIKit/UIView.h"

#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// What QML sees of one view: its properties, and in derived classes the operations of its user. Holds the
/// view weakly; once that is gone the item is that of a view that isn't shown. Main thread only.
///
/// Classes that QML sees name their base class in full: qmllint of Qt 6.4 finds it only so.
class ViewItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(double alpha READ alpha NOTIFY changed)
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
    /// How long the last change is to take, in milliseconds.
    Q_PROPERTY(int duration READ duration NOTIFY changed)

public:
    ViewItem(std::weak_ptr<UIView> view, QObject* parent) : QObject(parent), m_view(std::move(view)) {}

    bool isShown() const;
    double alpha() const;
    /// Whether the view takes part; true for what knows no other state.
    virtual bool isEnabled() const { return true; }
    int duration() const { return m_duration; }

    bool isOf(const UIView& view) const { return m_view.lock().get() == &view; }
    /// The view, or one in it, has changed and is to be seen so after that many seconds.
    void noteChange(double seconds);

Q_SIGNALS:
    /// Any property may have another value now.
    void changed();

protected:
    /// Null once the view is gone.
    template <class View>
    std::shared_ptr<View> viewAs() const {
        return std::dynamic_pointer_cast<View>(m_view.lock());
    }
    /// What the view answers, or a value like new once it is gone.
    template <class View, class Question>
    auto ask(Question question) const -> std::decay_t<decltype(question(std::declval<View&>()))> {
        const auto view = viewAs<View>();
        if (!view)
            return {};
        return question(*view);
    }
    /// Lets the user's hand do something with the view, if it is still there.
    template <class View, class Act>
    void act(Act act) const {
        if (const auto view = viewAs<View>())
            act(*view);
    }

private:
    const std::weak_ptr<UIView> m_view;
    int m_duration = 0;
};

} // namespace anadrome::desktop

#pragma once

#include <memory>
#include <string>
#include <vector>

namespace anadrome {

class UINavigationController;
class UIView;
class UIViewController;
class UIWindowScene;

/// What only a front end can show. Set once on UIApplication; called on the main thread, after the change
/// that it is told of. A front end overrides what it has a place for; the rest isn't shown.
///
/// Screens never wait for a transition: "animated" says how the front end may show what already holds.
class UIHost {
public:
    virtual ~UIHost() = default;

    virtual void didPush(UINavigationController& /*stack*/, UIViewController& /*controller*/,
                         bool /*animated*/) {}
    /// The popped controllers, the former top last.
    virtual void didPop(UINavigationController& /*stack*/,
                        const std::vector<std::shared_ptr<UIViewController>>& /*popped*/, bool /*animated*/) {
    }
    virtual void didPresent(UIViewController& /*presented*/, bool /*animated*/) {}
    virtual void didDismiss(UIViewController& /*dismissed*/, bool /*animated*/) {}

    /// A property or the list of subviews of a view in a window has changed; what it is now is asked of the
    /// view. The change is to be seen over `duration` seconds, at once if that is 0.
    virtual void viewChanged(UIView& /*view*/, double /*duration*/) {}

    /// False if nobody opens such an address.
    virtual bool openURL(const std::string& /*address*/) { return false; }
    /// Whether the user has a mail program.
    virtual bool canSendMail() const { return false; }
    /// Asks the user for a review as soon as they can see the question; may drop the request.
    virtual void requestReview(UIWindowScene& /*scene*/) {}
};

} // namespace anadrome

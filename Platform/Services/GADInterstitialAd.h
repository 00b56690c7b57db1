#pragma once

#include "Platform/Services/GADAdSource.h"
#include "Platform/Services/GADFullScreenContentDelegate.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIViewController;

/// An ad that covers the screen between two steps of the user's way. It is shown once. Main thread only.
class GADInterstitialAd : public std::enable_shared_from_this<GADInterstitialAd> {
public:
    /// The ad, or null and the error.
    using LoadCompletion =
        std::function<void(std::shared_ptr<GADInterstitialAd> ad, const std::optional<NSError>& error)>;

    /// Fetches an ad from the program's source. Completes once, on the main thread, never before the call
    /// returns.
    static void loadWithAdUnitID(const std::string& adUnitID, const GADRequest& request,
                                 LoadCompletion completion);

    /// Held weakly.
    void setFullScreenContentDelegate(std::weak_ptr<GADFullScreenContentDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    /// Shows the ad over the controller's window. An ad that was shown before, or a controller that can't
    /// present now, is told to the delegate as a failure, after the call.
    void presentFromRootViewController(UIViewController& controller);

private:
    explicit GADInterstitialAd(GADAdContent content) : m_content(std::move(content)) {}

    void fail(GADErrorCode code, const std::string& reason);

    const GADAdContent m_content;
    std::weak_ptr<GADFullScreenContentDelegate> m_delegate;
    bool m_isUsed = false;
};

} // namespace anadrome

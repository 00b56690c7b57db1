#pragma once

#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/Services/Ads/GADFullScreenContentDelegate.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIViewController;

/// An ad that covers the screen until the user closes it. It is shown once. Main thread only.
class GADFullScreenAd : public std::enable_shared_from_this<GADFullScreenAd> {
public:
    GADFullScreenAd(const GADFullScreenAd&) = delete;
    GADFullScreenAd& operator=(const GADFullScreenAd&) = delete;

    /// Held weakly.
    void setFullScreenContentDelegate(std::weak_ptr<GADFullScreenContentDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    /// Shows the ad over the controller's window. An ad that was shown before or is too old for its kind, or
    /// a controller that can't present now, is told to the delegate as a failure, after the call.
    void presentFromRootViewController(UIViewController& controller);

protected:
    /// Without an expiry the ad never becomes too old.
    explicit GADFullScreenAd(GADAdContent content, std::optional<GADAdContent::Date> expiry = std::nullopt)
        : m_content(std::move(content)), m_expiry(expiry) {}
    ~GADFullScreenAd() = default;

    /// Fetches an ad of a kind from the program's source; completes with the ad, or with null and the error.
    template <class Ad>
    static void load(GADAdFormat format, const std::string& adUnitID, const GADRequest& request,
                     std::function<void(std::shared_ptr<Ad>, const std::optional<NSError>&)> completion) {
        fetch(format, adUnitID, request, [completion = std::move(completion)](Result<GADAdContent> result) {
            if (result)
                completion(std::shared_ptr<Ad>(new Ad(std::move(*result))), std::nullopt);
            else
                completion(nullptr, result.error());
        });
    }

private:
    static void fetch(GADAdFormat format, const std::string& adUnitID, const GADRequest& request,
                      GADAdSource::Completion completion);
    bool isExpired() const;
    void fail(GADErrorCode code, const std::string& reason);

    const GADAdContent m_content;
    const std::optional<GADAdContent::Date> m_expiry;
    std::weak_ptr<GADFullScreenContentDelegate> m_delegate;
    bool m_isUsed = false;
};

} // namespace anadrome

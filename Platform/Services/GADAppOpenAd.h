#pragma once

#include "Platform/Services/GADFullScreenAd.h"

namespace anadrome {

/// The ad as the program comes to the front. It may be shown for four hours.
class GADAppOpenAd final : public GADFullScreenAd {
public:
    /// The ad, or null and the error.
    using LoadCompletion =
        std::function<void(std::shared_ptr<GADAppOpenAd> ad, const std::optional<NSError>& error)>;

    /// Fetches an ad from the program's source. Completes once, on the main thread, never before the call
    /// returns.
    static void loadWithAdUnitID(const std::string& adUnitID, const GADRequest& request,
                                 LoadCompletion completion) {
        load<GADAppOpenAd>(GADAdFormat::appOpen, adUnitID, request, std::move(completion));
    }

private:
    friend class GADFullScreenAd;

    explicit GADAppOpenAd(GADAdContent content)
        : GADFullScreenAd(std::move(content), std::chrono::hours(4)) {}
};

} // namespace anadrome

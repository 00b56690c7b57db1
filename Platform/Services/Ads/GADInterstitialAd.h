#pragma once

#include "Platform/Services/Ads/GADFullScreenAd.h"

namespace anadrome {

/// The ad between two steps of the user's way. It is shown however old it is, since the next step comes only
/// after it.
class GADInterstitialAd final : public GADFullScreenAd {
public:
    /// The ad, or null and the error.
    using LoadCompletion =
        std::function<void(std::shared_ptr<GADInterstitialAd> ad, const std::optional<NSError>& error)>;

    /// Fetches an ad from the program's source. Completes once, on the main thread, never before the call
    /// returns.
    static void loadWithAdUnitID(const std::string& adUnitID, const GADRequest& request,
                                 LoadCompletion completion) {
        load<GADInterstitialAd>(GADAdFormat::interstitial, adUnitID, request, std::move(completion));
    }

private:
    friend class GADFullScreenAd;

    explicit GADInterstitialAd(GADAdContent content) : GADFullScreenAd(std::move(content)) {}
};

} // namespace anadrome

#pragma once

#include "Platform/Services/Ads/GADFullScreenAd.h"

#include <algorithm>

namespace anadrome {

/// The ad as the program comes to the front. It may be shown for four hours, or less if its server says so.
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

    static constexpr std::chrono::seconds longestLifetime = std::chrono::hours(4);

    explicit GADAppOpenAd(const GADAdContent& content)
        : GADFullScreenAd(content, content.received + std::min(content.lifetime.value_or(longestLifetime),
                                                               longestLifetime)) {}
};

} // namespace anadrome

#pragma once

namespace anadrome {

class AppOpenAdManager;

/// Told when there is no app-open ad on the screen, or none any more.
class AppOpenAdManagerDelegate {
public:
    virtual ~AppOpenAdManagerDelegate() = default;

    virtual void appOpenAdManagerDidFinish(AppOpenAdManager& manager) = 0;
};

} // namespace anadrome

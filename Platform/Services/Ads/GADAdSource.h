#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Services/Ads/GADAdContent.h"
#include "Platform/Services/Ads/GADRequest.h"

#include <functional>
#include <memory>
#include <string>

namespace anadrome {

inline constexpr const char* GADErrorDomain = "GADErrorDomain";

/// Codes of GADErrorDomain.
enum GADErrorCode : long {
    GADErrorInvalidRequest = 0,
    GADErrorNoFill = 1,
    GADErrorNetworkError = 2,
    GADErrorReceivedInvalidResponse = 9,
    GADPresentationErrorCodeAdNotReady = 15,
    GADPresentationErrorCodeAdAlreadyUsed = 18,
};

enum class GADAdFormat { appOpen, interstitial, banner };

/// What an ad is for.
struct GADAdPlace {
    GADAdFormat format;
    /// The ad network's name of the place.
    std::string adUnitID;
    /// The room that there is, in points.
    CGSize size;
};

/// Where ads come from. Main thread only.
class GADAdSource {
public:
    using Completion = std::function<void(Result<GADAdContent> result)>;

    virtual ~GADAdSource() = default;

    /// Asks for an ad. Completes once, on the main thread, never before the call returns.
    virtual void fetch(const GADAdPlace& place, const GADRequest& request, Completion completion) = 0;

    /// Whether ads can come from it at all.
    virtual bool isDeployed() const { return true; }

    /// The program's one source. At first, and after null, it is the deployment's ad server.
    static GADAdSource& current();
    static void setCurrent(std::shared_ptr<GADAdSource> source);
};

} // namespace anadrome

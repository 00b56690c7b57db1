#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Services/GADRequest.h"

#include <functional>
#include <memory>
#include <string>

namespace anadrome {

inline constexpr const char* GADErrorDomain = "GADErrorDomain";

/// Codes of GADErrorDomain.
enum GADErrorCode : long {
    GADErrorNetworkError = 2,
    GADPresentationErrorCodeAdNotReady = 15,
    GADPresentationErrorCodeAdAlreadyUsed = 18,
};

/// What an ad shows.
struct GADAdContent {
    std::string text;
    /// Where a click leads.
    std::string link;
};

/// Where ads come from. Main thread only.
class GADAdSource {
public:
    using Completion = std::function<void(Result<GADAdContent> result)>;

    virtual ~GADAdSource() = default;

    /// Asks for an ad for the place of that identifier. Completes once, on the main thread, never before the
    /// call returns.
    virtual void fetch(const std::string& adUnitID, const GADRequest& request, Completion completion) = 0;

    /// The program's one source. At first, and after null, it is one that has no ads and says so.
    static GADAdSource& current();
    static void setCurrent(std::shared_ptr<GADAdSource> source);
};

} // namespace anadrome

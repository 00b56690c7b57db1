#include "Platform/StoreKit/SKStoreReviewController.h"

#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"

#include <cstdint>
#include <ctime>
#include <sstream>
#include <string>
#include <vector>

namespace anadrome {

namespace {

constexpr const char* timesKey = "reviewRequestTimes";
constexpr std::int64_t period = 365LL * 24 * 60 * 60;
constexpr std::size_t maximumRequests = 3;

/// Times of the requests that still count, in seconds since the epoch. Skips times ahead of the clock.
std::vector<std::int64_t> recentRequests(std::int64_t now) {
    std::istringstream text(NSUserDefaults::standardUserDefaults().stringForKey(timesKey).value_or(""));
    std::vector<std::int64_t> times;
    for (std::int64_t time = 0; text >> time;)
        if (time <= now && time > now - period)
            times.push_back(time);
    return times;
}

void store(const std::vector<std::int64_t>& times) {
    std::string text;
    for (const std::int64_t time : times)
        text.append(text.empty() ? "" : " ").append(std::to_string(time));
    NSUserDefaults::standardUserDefaults().setString(text, timesKey);
}

} // namespace

void SKStoreReviewController::requestReviewInScene(UIWindowScene& scene) {
    UIHost* host = UIApplication::sharedApplication().host();
    if (!host || Deployment::current().reviewPage().empty())
        return;
    const std::int64_t now = std::time(nullptr);
    std::vector<std::int64_t> requests = recentRequests(now);
    if (requests.size() >= maximumRequests)
        return;
    requests.push_back(now);
    store(requests);
    host->requestReview(scene);
}

} // namespace anadrome

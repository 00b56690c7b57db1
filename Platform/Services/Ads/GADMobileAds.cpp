#include "Platform/Services/Ads/GADMobileAds.h"

#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

GADMobileAds& GADMobileAds::sharedInstance() {
    static GADMobileAds instance;
    return instance;
}

void GADMobileAds::startWithCompletionHandler(std::function<void()> completion) {
    DispatchQueue::main().async(std::move(completion));
}

} // namespace anadrome

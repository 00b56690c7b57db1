#include "Platform/Services/Ads/GADAdContent.h"

#include "Platform/Services/Http/HttpAddress.h"
#include "Platform/UIKit/UIApplication.h"

namespace anadrome {

void clickAd(const GADAdContent& content) {
    if (isHttpAddress(content.link))
        UIApplication::sharedApplication().openURL(content.link);
}

} // namespace anadrome

#include "Platform/Services/GADAdContent.h"

#include "Platform/Services/WebAddress.h"
#include "Platform/UIKit/UIApplication.h"

namespace anadrome {

void clickAd(const GADAdContent& content) {
    if (isWebAddress(content.link))
        UIApplication::sharedApplication().openURL(content.link);
}

} // namespace anadrome

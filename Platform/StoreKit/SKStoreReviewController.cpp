#include "Platform/StoreKit/SKStoreReviewController.h"

#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"

namespace anadrome {

void SKStoreReviewController::requestReviewInScene(UIWindowScene& scene) {
    if (UIHost* host = UIApplication::sharedApplication().host())
        host->requestReview(scene);
}

} // namespace anadrome

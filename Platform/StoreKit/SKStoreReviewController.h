#pragma once

namespace anadrome {

class UIWindowScene;

/// Asks the user for a review of the program in its store. Main thread only.
class SKStoreReviewController {
public:
    /// Has the front end ask, unless no store page is deployed or the user was asked three times in the last
    /// 365 days. Returns at once; nothing reports the outcome.
    static void requestReviewInScene(UIWindowScene& scene);
};

} // namespace anadrome

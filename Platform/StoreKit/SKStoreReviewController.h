#pragma once

namespace anadrome {

class UIWindowScene;

/// Asks the user what they think of the program. Main thread only.
class SKStoreReviewController {
public:
    /// A wish, which the front end may pass over; nothing tells what became of it.
    static void requestReviewInScene(UIWindowScene& scene);
};

} // namespace anadrome

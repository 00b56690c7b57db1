#pragma once

#include "Platform/Foundation/NSError.h"

namespace anadrome {

/// Hears what becomes of an ad that covers the screen. Called on the main thread.
class GADFullScreenContentDelegate {
public:
    virtual ~GADFullScreenContentDelegate() = default;

    /// The ad is about to cover the screen; within the call that presents it.
    virtual void adWillPresentFullScreenContent() {}
    /// The ad has gone from the screen.
    virtual void adDidDismissFullScreenContent() {}
    /// The ad wasn't shown, and won't be.
    virtual void adDidFailToPresentFullScreenContentWithError(const NSError& /*error*/) {}
};

} // namespace anadrome

#pragma once

#include "Platform/Foundation/NSError.h"

#include <functional>
#include <optional>

namespace anadrome {

class UIViewController;

/// The form that asks the user for consent. Main thread only.
class UMPConsentForm {
public:
    using Completion = std::function<void(const std::optional<NSError>& error)>;

    /// Shows the form over the controller's window if consent is required. Completes once, on the main
    /// queue, never before the call returns: when the form has gone, or soon if it isn't required. If it
    /// can't be shown, that is an error.
    static void loadAndPresentIfRequiredFromViewController(UIViewController& controller,
                                                           Completion completion);
};

} // namespace anadrome

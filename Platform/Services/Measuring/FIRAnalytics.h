#pragma once

#include "Platform/Foundation/NSDictionary.h"

#include <functional>
#include <optional>
#include <string>

namespace anadrome {

/// Named events of the app, for those who want to know how it is used. Main thread only.
class FIRAnalytics {
public:
    /// Takes one event. What becomes of it, and of a failure, is the recorder's own matter.
    using Recorder =
        std::function<void(const std::string& name, const std::optional<Dictionary>& parameters)>;

    /// The one recorder of the program. Without one, or with an empty one, events go nowhere.
    static void setRecorder(Recorder recorder);

    static void logEventWithName(const std::string& name,
                                 const std::optional<Dictionary>& parameters = std::nullopt);
};

} // namespace anadrome

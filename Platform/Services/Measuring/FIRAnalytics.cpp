#include "Platform/Services/Measuring/FIRAnalytics.h"

#include <utility>

namespace anadrome {

namespace {

FIRAnalytics::Recorder& recorder() {
    static FIRAnalytics::Recorder instance;
    return instance;
}

} // namespace

void FIRAnalytics::setRecorder(Recorder newRecorder) {
    recorder() = std::move(newRecorder);
}

void FIRAnalytics::logEventWithName(const std::string& name, const std::optional<Dictionary>& parameters) {
    if (recorder())
        recorder()(name, parameters);
}

} // namespace anadrome

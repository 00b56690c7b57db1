#include "Platform/Services/Measuring/FIRApp.h"

#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/AnalyticsQueue.h"
#include "Platform/Services/Measuring/CrashReports.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/Services/Measuring/ServiceStateFolder.h"

#include <utility>

namespace anadrome {

namespace {

void keepEvents(const std::string& endpoint, const std::string& folder) {
    const auto queue = std::make_shared<AnalyticsQueue>(endpoint, folder, ServiceWorld::real());
    FIRAnalytics::setRecorder(
        [queue](const std::string& name, const std::optional<Dictionary>&) { queue->record(name); });
    queue->start();
}

} // namespace

void FIRApp::configure() {
    static bool isConfigured = false;
    const std::string folder = serviceStateFolder();
    if (std::exchange(isConfigured, true) || folder.empty())
        return;
    CrashReports::install(folder + "/crashes");
    const std::string& endpoint = Deployment::current().analyticsEndpoint;
    if (!endpoint.empty())
        keepEvents(endpoint, folder);
}

} // namespace anadrome

#include "Platform/Services/ServiceLines.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/Services/Deployment.h"

namespace anadrome {

namespace {

bool isDeployed(OutsideService service) {
    switch (service) {
    case OutsideService::ads:
        return GADAdSource::current().isDeployed();
    case OutsideService::consent:
        return !Deployment::current().consentEndpoint.empty();
    case OutsideService::remoteConfiguration:
        return !Deployment::current().remoteConfigEndpoint.empty();
    }
    return true;
}

} // namespace

void printServiceLine(OutsideService service, std::string_view line) {
    if (isDeployed(service))
        print(line);
    else
        debugLog(line);
}

} // namespace anadrome

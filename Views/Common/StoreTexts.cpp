#include "Views/Common/StoreTexts.h"

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Services/Deployment.h"

namespace anadrome {

std::string recommendation() {
    const std::string page = Deployment::current().storePage();
    return NSLocalizedString("AppName") + (page.empty() ? "" : " " + page);
}

} // namespace anadrome

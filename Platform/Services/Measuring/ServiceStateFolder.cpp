#include "Platform/Services/Measuring/ServiceStateFolder.h"

#include "Platform/Foundation/UserFolders.h"

namespace anadrome {

std::string serviceStateFolder() {
    const std::string folder = userStateFolder();
    return folder.empty() ? "" : folder + "/anadrome";
}

} // namespace anadrome

#include "Platform/Foundation/NSItemProvider.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/FileError.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UniformTypeIdentifiers/UTType.h"

#include <cerrno>
#include <unistd.h>

namespace anadrome {

bool NSItemProvider::hasItemConformingToTypeIdentifier(const std::string& identifier) const {
    return fileConformsToType(m_file, identifier);
}

void NSItemProvider::loadFileRepresentationForTypeIdentifier(const std::string& identifier,
                                                             FileHandler handler) const {
    if (!hasItemConformingToTypeIdentifier(identifier))
        fatalError("NSItemProvider: the item is not of the type " + identifier);
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([file = m_file, handler = std::move(handler)] {
            if (::access(file.path().c_str(), R_OK) == 0)
                handler(file, std::nullopt);
            else
                handler(std::nullopt, fileError(FileAction::read, errno, file.path()));
        });
}

} // namespace anadrome

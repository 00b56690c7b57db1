#pragma once

#include "Platform/Foundation/NSError.h"

#include <functional>
#include <optional>

namespace anadrome {

/// The user's movies: the folder "Anadrome" in their Videos folder. Any thread.
class PHPhotoLibrary {
public:
    /// Whether the changes were made, and if not, why: an error of PHPhotosErrorDomain.
    using CompletionHandler = std::function<void(bool success, std::optional<NSError> error)>;

    static PHPhotoLibrary& sharedPhotoLibrary();

    /// Runs a block that asks for changes, then makes them, in their order up to the first that fails, then
    /// calls the handler; all on the library's own serial queue. To be called inside such a block is fatal.
    void performChanges(std::function<void()> changes, CompletionHandler completionHandler) const;
};

} // namespace anadrome

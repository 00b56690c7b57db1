#pragma once

#include "Platform/Foundation/URL.h"

namespace anadrome {

/// A wish for a change of the photo library.
class PHAssetChangeRequest {
public:
    /// Asks for a copy of the movie in the library; the file itself stays. Outside of a block of
    /// PHPhotoLibrary::performChanges it is fatal.
    static void creationRequestForAssetFromVideoAtFileURL(const URL& file);
};

} // namespace anadrome

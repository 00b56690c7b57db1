#include "Platform/Photos/PHAssetChangeRequest.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Photos/ChangeBlock.h"

namespace anadrome {

void PHAssetChangeRequest::creationRequestForAssetFromVideoAtFileURL(const URL& file) {
    ChangeBlock* block = ChangeBlock::current();
    if (!block)
        fatalError("PHAssetChangeRequest: made outside of a block of changes");
    block->addVideo(file);
}

} // namespace anadrome

#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Tests/Support/ClipTest.h"

namespace anadrome {

/// A test with made clips as assets.
class MediaTest : public testing_support::ClipTest {
protected:
    std::shared_ptr<AVAsset> makeAsset(const std::string& name,
                                       const testing_support::ClipOptions& options) const {
        return AVAsset::assetWithURL(URL::fileURLWithPath(clip(name, options)));
    }

    AVAssetTrackRef makeVideoTrack(const std::string& name,
                                   const testing_support::ClipOptions& options) const {
        return makeAsset(name, options)->tracksWithMediaType(AVMediaTypeVideo).at(0);
    }
};

} // namespace anadrome

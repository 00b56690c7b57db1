#include "Desktop/Library/LoadThumbnail.h"

#include "Desktop/Library/ThumbnailCache.h"
#include "Platform/AVFoundation/AVAssetImageGenerator.h"

namespace anadrome::desktop {

namespace {

QImage imageOf(const CGImage& picture) {
    return QImage(picture.pixels.data(), picture.width, picture.height,
                  static_cast<qsizetype>(picture.bytesPerRow()), QImage::Format_RGBA8888)
        .copy();
}

Thumbnail makeThumbnail(const ThumbnailCache& cache, const ThumbnailCache::Original& original) {
    const auto asset = AVAsset::assetWithURL(original.file);
    const double seconds = CMTimeGetSeconds(asset->duration());
    AVAssetImageGenerator generator(asset);
    generator.setAppliesPreferredTrackTransform(true);
    generator.setMaximumSize({ThumbnailCache::size, ThumbnailCache::size});
    auto picture = generator.copyCGImageAtTime(CMTimeMakeWithSeconds(seconds / 3, 600));
    if (!picture) {
        cache.keepFailure(original);
        return {.isBroken = true};
    }
    return {cache.keep(original, imageOf(*picture), seconds), seconds};
}

} // namespace

Thumbnail loadThumbnail(const URL& clip) {
    const ThumbnailCache cache;
    const auto original = cache.originalOf(clip);
    if (!original)
        return {.isBroken = true};
    const auto known = cache.find(*original);
    if (!known)
        return makeThumbnail(cache, *original);
    if (known->picture.isEmpty())
        return {.isBroken = true};
    return {known->picture,
            known->seconds ? *known->seconds : CMTimeGetSeconds(AVAsset::assetWithURL(clip)->duration())};
}

} // namespace anadrome::desktop

#include "Models/VideoEncoder.h"

#include "Models/ExportTimer.h"
#include "Models/ReverseRun.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/Print.h"

#include <cmath>

namespace anadrome {

namespace {

/// The number cut toward zero.
std::int64_t cutToInteger(double value) {
    constexpr double limit = 9223372036854775808.0;
    if (!std::isfinite(value) || value >= limit || value < -limit)
        fatalError("originalBitrate: the bit rate is no 64-bit integer");
    return static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> fileSize(const URL& url) {
    const Result<Dictionary> attributes = NSFileManager::defaultManager().attributesOfItemAtPath(url.path());
    if (!attributes) {
        print("Failed to get file size: " + attributes.error().description());
        return std::nullopt;
    }
    const Value* size = find(*attributes, NSFileSize);
    return size ? size->asInteger() : std::nullopt;
}

} // namespace

VideoEncoder::VideoEncoder(ProgressSink updateProgress)
    : m_queue(DispatchQueue::serial("videoQueue")), m_updateProgress(std::move(updateProgress)),
      m_missingFrames(std::make_shared<std::atomic<std::int64_t>>(0)),
      m_exportTimer(std::make_shared<ExportTimer>()) {}

void VideoEncoder::reverseVideo(const URL& inputUrl, const URL& outputUrl, AVFileType fileType,
                                Completion completion, bool isReverseOnly) {
    const auto run =
        std::make_shared<ReverseRun>(ReverseRun::Request{inputUrl, outputUrl, fileType, std::move(completion),
                                                         isReverseOnly, m_stop.get_token(), m_missingFrames},
                                     m_queue, m_updateProgress);
    run->start();
}

std::optional<std::int64_t> VideoEncoder::originalBitrate(const AVAsset& asset) {
    const std::vector<AVAssetTrackRef> videoTracks = asset.tracksWithMediaType(AVMediaTypeVideo);
    if (videoTracks.empty())
        return std::nullopt;
    const float dataRate = videoTracks.front()->estimatedDataRate();
    if (dataRate > 0)
        return cutToInteger(dataRate);

    const auto* file = dynamic_cast<const AVURLAsset*>(&asset);
    const std::optional<std::int64_t> size = file ? fileSize(file->url()) : std::nullopt;
    if (!size)
        return std::nullopt;
    return cutToInteger(static_cast<double>(*size) * 8 * 0.8 / CMTimeGetSeconds(asset.duration()));
}

} // namespace anadrome

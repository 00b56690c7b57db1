#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/AVMetadataItem.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace anadrome {

/// Timed media: tracks and their common length. Immutable once loaded; any thread.
class AVAsset {
public:
    /// An asset for the file, whatever the file is like: one that can't be read has no tracks.
    static std::shared_ptr<AVAsset> assetWithURL(const URL& url);

    virtual ~AVAsset() = default;

    /// The tracks that can be decoded here, in the file's order.
    virtual const std::vector<AVAssetTrackRef>& tracks() const = 0;
    /// The end of the track that ends last; zero without tracks.
    virtual CMTime duration() const = 0;
    /// Why the asset can't be read, if it can't.
    virtual std::optional<NSError> loadError() const = 0;
    /// What is known of the content: place, date, camera, texts. Empty unless the asset is a file that has
    /// some.
    virtual std::vector<AVMetadataItem> metadata() const { return {}; }

    std::vector<AVAssetTrackRef> tracksWithMediaType(AVMediaType mediaType) const;
};

/// A movie file. The file is looked at when a property is first asked for, which blocks for as long as that
/// takes.
class AVURLAsset final : public AVAsset {
public:
    explicit AVURLAsset(URL url) : m_url(std::move(url)) {}

    const URL& url() const { return m_url; }

    const std::vector<AVAssetTrackRef>& tracks() const override;
    CMTime duration() const override;
    std::optional<NSError> loadError() const override;
    std::vector<AVMetadataItem> metadata() const override;

private:
    void load() const;

    const URL m_url;
    mutable std::once_flag m_loaded;
    mutable std::vector<AVAssetTrackRef> m_tracks;
    mutable CMTime m_duration = kCMTimeZero;
    mutable std::optional<NSError> m_loadError;
    mutable std::vector<AVMetadataItem> m_metadata;
};

} // namespace anadrome

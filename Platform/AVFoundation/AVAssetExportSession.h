#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVAudioTimePitchAlgorithm.h"
#include "Platform/AVFoundation/AVExportPresets.h"
#include "Platform/AVFoundation/AVMetadataItem.h"
#include "Platform/AVFoundation/AVMutableVideoComposition.h"

#include <functional>
#include <string>

namespace anadrome {

namespace render {
class ExportRun;
}

enum class AVAssetExportSessionStatus {
    unknown = 0,
    waiting = 1,
    exporting = 2,
    completed = 3,
    failed = 4,
    cancelled = 5
};

/// Writes a new movie of an asset, a file or an edit, in the form of a preset. For one use: make it, set what
/// is to be set, export.
///
/// With a video composition there is a picture every frame duration, and sound as long as the pictures.
/// Without one the first video track's pictures keep their times and their transform. All sound tracks are
/// heard together. HDR becomes BT.709. Status, error and progress may be read from any thread; the rest is
/// for one thread before the export.
class AVAssetExportSession : public std::enable_shared_from_this<AVAssetExportSession> {
public:
    /// Null for an unknown preset, and for an asset without tracks.
    static std::shared_ptr<AVAssetExportSession> exportSessionWithAsset(std::shared_ptr<const AVAsset> asset,
                                                                        const std::string& presetName);

    /// A frame duration that isn't positive is a fatal error.
    void setVideoComposition(AVMutableVideoComposition videoComposition);
    /// Required. A file that exists fails the export and stays as it is.
    void setOutputURL(URL outputURL);
    /// Required.
    void setOutputFileType(AVFileType outputFileType);
    /// Required for edits with a stretch that has sound and another speed than its source.
    void setAudioTimePitchAlgorithm(AVAudioTimePitchAlgorithm algorithm);
    /// Default: the asset's own.
    void setMetadata(std::vector<AVMetadataItem> metadata);
    /// Puts the index before the media, so that a player can begin while it loads. Default: false.
    void setShouldOptimizeForNetworkUse(bool optimizes);

    /// Returns at once. The handler runs once, on some thread, with status and error final. The session and
    /// the asset live until then. A failed export leaves its unfinished file.
    void exportAsynchronouslyWithCompletionHandler(std::function<void()> handler);

    /// Ends the export with status cancelled and removes its file. Returns at once; the handler runs soon,
    /// and doesn't wait for decoding and encoding threads to end. An export that hasn't begun ends as soon as
    /// it does; one that has ended stays as it is. Any thread.
    void cancelExport();

    AVAssetExportSessionStatus status() const;
    /// Set when failed or cancelled, and only then.
    std::optional<NSError> error() const;
    /// From 0 to 1, rising; 1 when completed.
    float progress() const;

private:
    explicit AVAssetExportSession(std::shared_ptr<render::ExportRun> run) : m_run(std::move(run)) {}

    const std::shared_ptr<render::ExportRun> m_run;
};

} // namespace anadrome

#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVAssetReaderTrackOutput.h"

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace anadrome {

enum class AVAssetReaderStatus { unknown = 0, reading = 1, completed = 2, failed = 3, cancelled = 4 };

/// Decodes an asset from start to end, track by track. Every output decodes on a thread of its own, a few
/// samples ahead of the caller, with a look of its own into the file: outputs may be drained one after
/// another without one holding up decoded samples of the other. One thread uses a reader at a
/// time, except to cancel it.
class AVAssetReader {
public:
    /// An asset that can't be read is an error.
    static Result<std::shared_ptr<AVAssetReader>> make(std::shared_ptr<AVAsset> asset);

    /// Cancels what still runs; doesn't wait for it.
    ~AVAssetReader();
    AVAssetReader(const AVAssetReader&) = delete;
    AVAssetReader& operator=(const AVAssetReader&) = delete;

    /// Only before startReading().
    void addOutput(std::shared_ptr<AVAssetReaderTrackOutput> output);

    /// False, with status failed, if the settings of an output can't be met or its track can't be opened.
    bool startReading();

    /// Completed only once every output has given its end.
    AVAssetReaderStatus status() const;
    /// Set only when failed.
    std::optional<NSError> error() const;

    /// Ends reading: further reads give null, also one that waits for a sample. Without effect once completed
    /// or failed. After startReading() any thread may call it.
    void cancelReading();

private:
    explicit AVAssetReader(std::shared_ptr<AVAsset> asset) : m_asset(std::move(asset)) {}

    std::shared_ptr<AVAsset> m_asset;
    std::vector<std::shared_ptr<AVAssetReaderTrackOutput>> m_outputs;
    bool m_started = false;
    std::atomic<bool> m_cancelled = false;
    std::optional<NSError> m_startError;
};

} // namespace anadrome

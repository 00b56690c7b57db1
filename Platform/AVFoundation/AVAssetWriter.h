#pragma once

#include "Platform/AVFoundation/AVAssetWriterInput.h"
#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/AVFoundation/AVMetadataItem.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace anadrome {

enum class AVAssetWriterStatus { unknown = 0, writing = 1, completed = 2, failed = 3, cancelled = 4 };

/// Encodes samples and writes them to a new movie file. For one use: add inputs, startWriting(),
/// startSessionAtSourceTime(), append to the inputs, finishWritingWithCompletionHandler().
///
/// Every input encodes on a thread of its own; appending never waits for an encoder. Calls in the wrong state
/// are fatal errors. Status and error may be read from any thread; the rest is for one thread at a time.
class AVAssetWriter {
public:
    static Result<std::shared_ptr<AVAssetWriter>> assetWriterWithURL(const URL& url, AVFileType fileType);

    /// Cancels a writer that was started and never finished, without waiting.
    ~AVAssetWriter();
    AVAssetWriter(const AVAssetWriter&) = delete;
    AVAssetWriter& operator=(const AVAssetWriter&) = delete;

    /// Whether the input's settings can be met: HEVC or H.264 video or AAC sound with the required keys, one
    /// input a medium.
    bool canAddInput(const AVAssetWriterInput& input) const;
    void addInput(const std::shared_ptr<AVAssetWriterInput>& input);

    /// What the movie shall say of its content, before writing starts. What its container can't hold is left
    /// out.
    void setMetadata(std::vector<AVMetadataItem> metadata);
    /// Whether the index shall stand before the media, so that a movie plays while it is being loaded; before
    /// writing starts. Finishing then moves all media on within the file.
    void setShouldOptimizeForNetworkUse(bool should);

    /// Makes the file. False, with status failed, if it exists already (the old one stays) or can't be made.
    bool startWriting();

    /// The time in the source that samples are counted from. It is kept: a sample at this time lies there in
    /// the file, and a start above zero leaves the time before it empty.
    void startSessionAtSourceTime(const CMTime& time);

    /// Marks open inputs as finished and returns at once. The handler runs once on some thread when the file
    /// is whole or has failed. The file of a failed run is left in place.
    void finishWritingWithCompletionHandler(std::function<void()> handler);

    /// Stops encoding, waits until it has stopped, and removes the file. Without effect once completed or
    /// failed.
    void cancelWriting();
    /// The same without the wait: the encoding threads end by themselves, up to a few pictures later.
    void abandonWriting();

    AVAssetWriterStatus status() const;
    std::optional<NSError> error() const;

private:
    AVAssetWriter(URL url, AVFileType fileType);

    std::shared_ptr<libav::WriterSession> m_session;
    std::vector<std::shared_ptr<AVAssetWriterInput>> m_inputs;
    bool m_finishing = false;
};

} // namespace anadrome

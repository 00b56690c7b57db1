#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSDictionary.h"

#include <functional>
#include <memory>

namespace anadrome {

namespace libav {
class WriterLane;
class WriterSession;
} // namespace libav

/// One track of an AVAssetWriter. One thread at a time, and the block that asks for data on its queue.
class AVAssetWriterInput {
public:
    /// The hint says what the samples come from: an encoder divides its bits by its frame rate and carries on
    /// its mastering data; sound is converted from what it says.
    AVAssetWriterInput(AVMediaType mediaType, Dictionary outputSettings,
                       CMFormatDescriptionRef sourceFormatHint = nullptr);

    /// The track's display transform. Only before writing starts.
    void setTransform(const CGAffineTransform& transform) { m_transform = transform; }
    /// Accepted for its false form: no sample is ever dropped to keep up.
    void setExpectsMediaDataInRealTime(bool) {}

    /// Back-pressure: false while the encoder's queue is full, and while this input is more than about a
    /// second ahead of another that isn't finished. True after a failure, so that feeders come to their end.
    bool isReadyForMoreMediaData() const;

    /// Runs the block on the queue whenever the input is ready, again after it has returned, until
    /// markAsFinished(); on a serial queue it never runs again once that was called there. After a failure it
    /// runs one more time. Only after startWriting(), once.
    void requestMediaDataWhenReadyOnQueue(const DispatchQueue& queue, std::function<void()> block);

    /// Takes one sample. False if the writer isn't writing or the times don't rise. Invalid times lay samples
    /// end to end from the session's start. A picture lasts until the next one; the last one for its own
    /// duration, or as long as the one before it if it has none. Appending while not ready is allowed and
    /// only grows the queue.
    bool appendSampleBuffer(const CMSampleBufferRef& sample);

    /// No more samples will come. Other inputs no longer wait for this one.
    void markAsFinished();

    AVMediaType mediaType() const { return m_mediaType; }
    const Dictionary& outputSettings() const { return m_outputSettings; }
    const CMFormatDescriptionRef& sourceFormatHint() const { return m_sourceFormatHint; }
    const CGAffineTransform& transform() const { return m_transform; }

private:
    friend class AVAssetWriter;
    friend class AVAssetWriterInputPixelBufferAdaptor;

    bool append(CVPixelBufferRef pixels, const CMTime& time);
    libav::WriterSession& session() const;

    AVMediaType m_mediaType;
    Dictionary m_outputSettings;
    CMFormatDescriptionRef m_sourceFormatHint;
    CGAffineTransform m_transform;
    std::shared_ptr<libav::WriterSession> m_session;
    std::shared_ptr<libav::WriterLane> m_lane;
};

} // namespace anadrome

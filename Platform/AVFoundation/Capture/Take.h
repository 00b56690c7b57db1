#pragma once

#include "Platform/AVFoundation/AVAssetWriter.h"
#include "Platform/AVFoundation/AVAssetWriterInputPixelBufferAdaptor.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace anadrome::capture {

/// One recording while it is made. Pictures and sound come as they are captured, with times of one clock; the
/// movie counts from its first picture. Nothing waits: a picture that comes while the encoder is behind is
/// left out, and sound that stays away is silence.
///
/// A take that goes without finish() takes its file along. Any thread.
class Take {
public:
    /// The file is made when the first picture comes. A take that ends before its sound begins has no sound
    /// track.
    Take(URL url, AVFileType fileType, bool hasSound)
        : m_url(std::move(url)), m_fileType(fileType), m_hasSound(hasSound) {}

    /// False if the movie can't be written any further.
    bool addPicture(const CMSampleBufferRef& picture);
    void addSound(const CMSampleBufferRef& sound);

    using Completion = std::function<void(const std::optional<NSError>& error)>;
    /// No more will come. Once. The completion runs when the movie is whole or has failed, on some thread; a
    /// take without a picture fails at once.
    void finish(Completion completion);

    const URL& url() const { return m_url; }
    /// From the first picture to the last.
    CMTime duration() const;

private:
    // All of these expect the mutex to be held.
    bool openLocked(const CMSampleBufferRef& first);
    void coverSilenceLocked(const CMTime& until);
    void appendSoundLocked(const CMSampleBufferRef& sound, const CMTime& time);
    CMTime movieTimeLocked(const CMSampleBufferRef& sample) const;

    const URL m_url;
    const AVFileType m_fileType;
    const bool m_hasSound;

    mutable std::mutex m_mutex;
    std::shared_ptr<AVAssetWriter> m_writer;
    std::shared_ptr<AVAssetWriterInput> m_pictures;
    std::shared_ptr<AVAssetWriterInput> m_sound;
    std::optional<NSError> m_error;
    bool m_isFinished = false;
    CMTime m_start = kCMTimeInvalid;
    CMTime m_lastPicture = kCMTimeNegativeInfinity;
    CMTime m_soundEnd = kCMTimeZero;
};

} // namespace anadrome::capture

#include "Platform/AVFoundation/Capture/Take.h"

#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/AVFoundation/Libav/PcmBuffers.h"

#include <array>

namespace anadrome::capture {

namespace {

/// Ticks a second of the movie's picture track.
constexpr std::int32_t timescale = 90'000;
constexpr int soundRate = 48'000;

/// A sound card's clock and the wall clock drift apart; below this nobody notices.
constexpr CMTime allowedOverlap{40, 1000, kCMTimeFlags_Valid, 0};
/// Sound may come this much later than its pictures. It stays below the lead that a writer gives pictures.
constexpr CMTime longestSoundDelay{500, 1000, kCMTimeFlags_Valid, 0};
constexpr CMTime silenceMargin{250, 1000, kCMTimeFlags_Valid, 0};

Dictionary pictureSettings(const CMSampleBufferRef& picture) {
    const CVImageBufferRef pixels = CMSampleBufferGetImageBuffer(picture);
    const Dictionary attachments = CVBufferCopyAttachments(pixels, kCVAttachmentMode_ShouldPropagate);
    return {{AVVideoCodecKey, AVVideoCodecTypeH264},
            {AVVideoWidthKey, static_cast<double>(CVPixelBufferGetWidth(pixels))},
            {AVVideoHeightKey, static_cast<double>(CVPixelBufferGetHeight(pixels))},
            {AVVideoColorPropertiesKey, libav::colorPropertiesFor(libav::tagsFromAttachments(attachments))}};
}

const Dictionary soundSettings{{AVFormatIDKey, kAudioFormatMPEG4AAC},
                               {AVSampleRateKey, soundRate},
                               {AVNumberOfChannelsKey, 2},
                               {AVEncoderBitRateKey, 160'000}};

} // namespace

bool Take::addPicture(const CMSampleBufferRef& picture) {
    const std::lock_guard lock(m_mutex);
    if (m_isFinished)
        return true;
    if (m_error || (!m_writer && !openLocked(picture)))
        return false;
    const CMTime time =
        CMTimeConvertScale(movieTimeLocked(picture), timescale, CMTimeRoundingMethod::RoundHalfAwayFromZero);
    if (m_hasSound)
        coverSilenceLocked(time);
    if (CMTimeCompare(time, m_lastPicture) <= 0 || !m_pictures->isReadyForMoreMediaData())
        return true;
    m_lastPicture = time;
    return AVAssetWriterInputPixelBufferAdaptor(m_pictures, {})
        .appendPixelBuffer(CMSampleBufferGetImageBuffer(picture), time);
}

bool Take::openLocked(const CMSampleBufferRef& first) {
    Result<std::shared_ptr<AVAssetWriter>> writer = AVAssetWriter::assetWriterWithURL(m_url, m_fileType);
    m_pictures = std::make_shared<AVAssetWriterInput>(AVMediaTypeVideo, pictureSettings(first),
                                                      CMSampleBufferGetFormatDescription(first));
    if (!writer || !(*writer)->canAddInput(*m_pictures)) {
        m_error = writer ? makeAVError(AVErrorUnsupportedOutputSettings) : writer.error();
        return false;
    }
    m_writer = *writer;
    m_writer->addInput(m_pictures);
    if (m_hasSound) {
        m_sound = std::make_shared<AVAssetWriterInput>(AVMediaTypeAudio, soundSettings);
        m_writer->addInput(m_sound);
    }
    m_start = CMSampleBufferGetPresentationTimeStamp(first);
    const bool isWriting = m_writer->startWriting();
    m_writer->startSessionAtSourceTime(kCMTimeZero);
    return isWriting;
}

/// A writer holds pictures back that are far ahead of the sound, so a device that gives none must not keep it
/// waiting.
void Take::coverSilenceLocked(const CMTime& until) {
    if (CMTimeCompare(CMTimeSubtract(until, m_soundEnd), longestSoundDelay) <= 0)
        return;
    static const CMFormatDescriptionRef form = libav::describePcm(soundRate, 2);
    const std::array<std::int16_t, 2 * 1024> silence{};
    // The encoder fills what lies before it.
    const CMTime time = CMTimeSubtract(until, silenceMargin);
    appendSoundLocked(libav::makePcmBuffer(form, silence, time), time);
}

void Take::addSound(const CMSampleBufferRef& sound) {
    const std::lock_guard lock(m_mutex);
    if (!m_writer || !m_hasSound || m_isFinished)
        return;
    const CMTime time = movieTimeLocked(sound);
    // What was captured before the first picture, comes too late, or runs ahead of the clock is left out.
    if (CMTimeCompare(CMTimeSubtract(m_soundEnd, time), allowedOverlap) <= 0)
        appendSoundLocked(sound, time);
}

void Take::appendSoundLocked(const CMSampleBufferRef& sound, const CMTime& time) {
    const CMFormatDescriptionRef form = CMSampleBufferGetFormatDescription(sound);
    const CMTime sampleDuration = CMTimeMake(1, static_cast<std::int32_t>(form->audio.sampleRate));
    const CMSampleTimingInfo timing{sampleDuration, time, kCMTimeInvalid};
    CMSampleBufferRef retimed;
    CMSampleBufferCreate(CMSampleBufferGetDataBuffer(sound), form, CMSampleBufferGetNumSamples(sound),
                         {&timing, 1}, {}, &retimed);
    m_soundEnd = CMTimeAdd(CMTimeMaximum(m_soundEnd, time), CMSampleBufferGetDuration(retimed));
    m_sound->appendSampleBuffer(retimed);
}

CMTime Take::movieTimeLocked(const CMSampleBufferRef& sample) const {
    return CMTimeSubtract(CMSampleBufferGetPresentationTimeStamp(sample), m_start);
}

void Take::finish(Completion completion) {
    {
        const std::lock_guard lock(m_mutex);
        m_isFinished = true;
    }
    // Nobody touches the writer any more.
    if (!m_writer)
        return completion(m_error.value_or(makeAVError(AVErrorNoDataCaptured)));
    m_writer->finishWritingWithCompletionHandler(
        [writer = m_writer, completion = std::move(completion)] { completion(writer->error()); });
}

CMTime Take::duration() const {
    const std::lock_guard lock(m_mutex);
    return CMTIME_IS_NUMERIC(m_lastPicture) ? m_lastPicture : kCMTimeZero;
}

} // namespace anadrome::capture

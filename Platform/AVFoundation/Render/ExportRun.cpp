#include "Platform/AVFoundation/Render/ExportRun.h"

#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/ColorTags.h"

#include <algorithm>

namespace anadrome::render {

namespace {

constexpr int soundBitRate = 128'000;

bool hasAnotherSpeed(const AVAssetTrackSegment& segment) {
    return !segment.isEmpty() &&
           CMTimeCompare(segment.timeMapping.source.duration, segment.timeMapping.target.duration) != 0;
}

} // namespace

void ExportRun::start(std::function<void()> completion) {
    m_completion = std::move(completion);
    {
        const std::lock_guard lock(m_mutex);
        m_status = AVAssetExportSessionStatus::exporting;
    }
    DispatchQueue::global(QualityOfService::userInitiated).async([self = shared_from_this()] {
        if (std::optional<NSError> error = self->prepare())
            self->complete(AVAssetExportSessionStatus::failed, std::move(error));
        else
            self->startWriting();
    });
}

void ExportRun::cancel() {
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_isCancelled, true) || !m_isWriting)
        return;
    DispatchQueue::global(QualityOfService::userInitiated).async([self = shared_from_this()] {
        self->abandon();
    });
}

void ExportRun::abandon() {
    // The feeds end by themselves, as the writer takes nothing more.
    m_writer->abandonWriting();
    complete(AVAssetExportSessionStatus::cancelled, makeAVError(AVErrorOperationCancelled));
}

std::optional<NSError> ExportRun::prepare() {
    if (std::optional<NSError> error = m_asset->loadError())
        return error;
    if (std::optional<NSError> error = checkTimeline())
        return error;
    Result<std::shared_ptr<AVAssetWriter>> writer =
        AVAssetWriter::assetWriterWithURL(*m_request.outputURL, *m_request.outputFileType);
    if (!writer)
        return writer.error();
    m_writer = *writer;
    m_writer->setShouldOptimizeForNetworkUse(m_request.optimizesForNetworkUse);
    m_writer->setMetadata(m_request.metadata ? *m_request.metadata : m_asset->metadata());
    if (std::optional<NSError> error = prepareVideo())
        return error;
    prepareAudio();
    return std::nullopt;
}

/// No stretch may last no time, and none may have another speed without saying what becomes of its pitch.
std::optional<NSError> ExportRun::checkTimeline() const {
    for (const AVAssetTrackRef& track : m_asset->tracks())
        for (const AVAssetTrackSegment& segment : track->segments()) {
            if (CMTIMERANGE_IS_EMPTY(segment.timeMapping.target))
                return makeAVError(AVErrorInvalidCompositionTrackSegmentDuration);
            if (track->mediaType() == AVMediaTypeAudio && hasAnotherSpeed(segment) &&
                !m_request.pitchAlgorithm)
                return makeAVError(AVErrorOperationNotSupportedForAsset);
        }
    return std::nullopt;
}

std::optional<NSError> ExportRun::prepareVideo() {
    m_length = m_asset->duration();
    const std::vector<AVAssetTrackRef> tracks = m_asset->tracksWithMediaType(AVMediaTypeVideo);
    if (m_request.videoComposition) {
        Result<std::unique_ptr<FrameSchedule>> composed =
            composedFrames(*m_asset, *m_request.videoComposition, m_presetBox);
        if (!composed)
            return composed.error();
        m_pictures = std::move(*composed);
        m_length = m_pictures->end();
    } else if (!tracks.empty()) {
        m_pictures = trackFrames(tracks.front(), m_presetBox);
    } else {
        return std::nullopt;
    }
    m_videoInput = makeVideoInput(*m_pictures);
    m_writer->addInput(m_videoInput);
    return std::nullopt;
}

std::shared_ptr<AVAssetWriterInput> ExportRun::makeVideoInput(const FrameSchedule& schedule) const {
    const PictureComposer::Target& target = schedule.target();
    CMFormatDescription hint;
    hint.dimensions = {target.size.width, target.size.height};
    hint.frameRateHint = schedule.frameRate();
    auto input = std::make_shared<AVAssetWriterInput>(
        AVMediaTypeVideo,
        Dictionary{{AVVideoCodecKey, AVVideoCodecTypeH264},
                   {AVVideoWidthKey, target.size.width},
                   {AVVideoHeightKey, target.size.height},
                   {AVVideoColorPropertiesKey, libav::colorPropertiesFor(target.color)}},
        std::make_shared<const CMFormatDescription>(std::move(hint)));
    input->setTransform(schedule.transform());
    return input;
}

void ExportRun::prepareAudio() {
    const std::vector<AVAssetTrackRef> tracks = m_asset->tracksWithMediaType(AVMediaTypeAudio);
    if (tracks.empty())
        return;
    const int sampleRate = mixedSampleRate(tracks);
    m_sound = std::make_unique<SoundMixer>(tracks, sampleRate, m_length);
    m_audioInput = std::make_shared<AVAssetWriterInput>(AVMediaTypeAudio,
                                                        Dictionary{{AVFormatIDKey, kAudioFormatMPEG4AAC},
                                                                   {AVSampleRateKey, sampleRate},
                                                                   {AVNumberOfChannelsKey, 2},
                                                                   {AVEncoderBitRateKey, soundBitRate}});
    m_writer->addInput(m_audioInput);
}

void ExportRun::startWriting() {
    if (!m_writer->startWriting()) {
        complete(AVAssetExportSessionStatus::failed, m_writer->error());
        return;
    }
    m_writer->startSessionAtSourceTime(kCMTimeZero);
    m_openFeeds = (m_videoInput ? 1 : 0) + (m_audioInput ? 1 : 0);
    const bool isCancelled = [this] {
        const std::lock_guard lock(m_mutex);
        m_isWriting = true;
        return m_isCancelled;
    }();
    if (isCancelled)
        return abandon();
    if (m_videoInput)
        feed(m_videoInput, &ExportRun::appendPicture);
    if (m_audioInput)
        feed(m_audioInput, &ExportRun::appendSound);
}

void ExportRun::feed(const std::shared_ptr<AVAssetWriterInput>& input, Step step) {
    // The writer drops the block, and with it this reference, when the input is finished.
    input->requestMediaDataWhenReadyOnQueue(
        DispatchQueue::serial("export"), [self = shared_from_this(), input, step] {
            while (input->isReadyForMoreMediaData()) {
                // The other feed's failure ends this one too.
                const Result<bool> appended = self->feedError() ? Result<bool>(false) : (self.get()->*step)();
                if (appended && *appended)
                    continue;
                input->markAsFinished();
                self->feedEnded(appended ? std::nullopt : std::optional(appended.error()));
                return;
            }
        });
}

Result<bool> ExportRun::appendPicture() {
    Result<std::optional<FrameSchedule::Frame>> frame = m_pictures->next();
    if (!frame)
        return frame.error();
    if (!*frame)
        return false;
    const auto& [pixels, time, duration] = **frame;
    CMSampleBufferRef sample;
    CMSampleBufferCreateForImageBuffer(pixels, m_videoInput->sourceFormatHint(),
                                       {duration, time, kCMTimeInvalid}, &sample);
    if (!m_videoInput->appendSampleBuffer(sample))
        return false;
    report(time);
    return true;
}

Result<bool> ExportRun::appendSound() {
    Result<CMSampleBufferRef> sound = m_sound->next();
    if (!sound)
        return sound.error();
    if (!*sound || !m_audioInput->appendSampleBuffer(*sound))
        return false;
    if (!m_videoInput)
        report(CMSampleBufferGetPresentationTimeStamp(*sound));
    return true;
}

void ExportRun::feedEnded(std::optional<NSError> error) {
    bool isLast = false;
    {
        const std::lock_guard lock(m_mutex);
        if (error && !m_feedError)
            m_feedError = std::move(error);
        isLast = --m_openFeeds == 0;
    }
    if (isLast)
        finishWriting();
}

void ExportRun::finishWriting() {
    // The decoders' pictures aren't needed while the encoder empties.
    m_pictures.reset();
    m_sound.reset();
    m_writer->finishWritingWithCompletionHandler([self = shared_from_this()] {
        std::optional<NSError> failure = self->feedError();
        if (self->m_writer->status() == AVAssetWriterStatus::cancelled)
            return self->complete(AVAssetExportSessionStatus::cancelled,
                                  makeAVError(AVErrorOperationCancelled));
        if (!failure && self->m_writer->status() != AVAssetWriterStatus::completed)
            failure = self->m_writer->error().value_or(makeAVError(AVErrorExportFailed));
        self->complete(failure ? AVAssetExportSessionStatus::failed : AVAssetExportSessionStatus::completed,
                       failure);
    });
}

void ExportRun::complete(AVAssetExportSessionStatus status, std::optional<NSError> error) {
    {
        const std::lock_guard lock(m_mutex);
        // A cancelled run may be told its end by the writer as well.
        if (m_status != AVAssetExportSessionStatus::exporting)
            return;
        m_status = status;
        m_error = std::move(error);
        if (status == AVAssetExportSessionStatus::completed)
            m_progress = 1;
    }
    const std::function<void()> completion = std::exchange(m_completion, nullptr);
    completion();
}

void ExportRun::report(const CMTime& time) {
    const double share = CMTimeGetSeconds(time) / CMTimeGetSeconds(m_length);
    // The last bit is for what the encoder and the file still take.
    m_progress = static_cast<float>(std::clamp(share, 0.0, 0.99));
}

std::optional<NSError> ExportRun::feedError() const {
    const std::lock_guard lock(m_mutex);
    return m_feedError;
}

AVAssetExportSessionStatus ExportRun::status() const {
    const std::lock_guard lock(m_mutex);
    return m_status;
}

std::optional<NSError> ExportRun::error() const {
    const std::lock_guard lock(m_mutex);
    return m_error;
}

} // namespace anadrome::render

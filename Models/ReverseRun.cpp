#include "Models/ReverseRun.h"

#include "Models/FixedPreferredTransform.h"
#include "Models/FrameStoreOwner.h"
#include "Models/ReversedSampleBuffer.h"
#include "Models/SourceColor.h"
#include "Models/VideoFrameManager.h"
#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

namespace {

constexpr std::int64_t fallbackBitrate = 10'000'000;
constexpr std::int64_t fallbackHDRBitrate = 20'000'000;

constexpr const char* stoppedMessage = "Reverse: Cancelled";

OSType pixelFormat(bool isHDR) {
    return isHDR ? kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange
                 : kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;
}

const Dictionary readerAudioSettings{{AVFormatIDKey, kAudioFormatLinearPCM},
                                     {AVLinearPCMBitDepthKey, 16},
                                     {AVLinearPCMIsBigEndianKey, false},
                                     {AVLinearPCMIsFloatKey, false}};

/// The same for every source: the writer converts.
const Dictionary writerAudioSettings{{AVFormatIDKey, kAudioFormatMPEG4AAC},
                                     {AVSampleRateKey, 44100},
                                     {AVNumberOfChannelsKey, 2},
                                     {AVEncoderBitRateKey, 128000},
                                     {AVChannelLayoutKey, NSData{}}};

} // namespace

ReverseRun::ReverseRun(Request request, DispatchQueue queue, VideoEncoder::ProgressSink updateProgress)
    : m_request(std::move(request)), m_queue(std::move(queue)), m_updateProgress(std::move(updateProgress)) {}

void ReverseRun::start() {
    if (!FrameStoreOwner::take(m_request.stop)) {
        if (m_request.completion)
            m_request.completion(false, stoppedMessage);
        return;
    }
    *m_request.missingFrames = 0;
    for (const auto step : {&ReverseRun::open, &ReverseRun::read, &ReverseRun::configure}) {
        std::optional<std::string> message = (this->*step)();
        if (isStopped()) {
            VideoFrameManager::removeAllFrames();
            message = stoppedMessage;
        }
        if (message)
            return complete(false, std::move(message));
    }
    startWriting();
}

void ReverseRun::complete(bool success, std::optional<std::string> message) const {
    FrameStoreOwner::release();
    if (m_request.completion)
        m_request.completion(success, std::move(message));
}

std::optional<std::string> ReverseRun::open() {
    m_asset = AVAsset::assetWithURL(m_request.inputUrl);
    Result<std::shared_ptr<AVAssetReader>> reader = AVAssetReader::make(m_asset);
    if (!reader) {
        debugLog(reader.error().description());
        return "Reverse: Failed to init reader";
    }
    m_reader = *reader;

    const std::vector<AVAssetTrackRef> videoTracks = m_asset->tracksWithMediaType(AVMediaTypeVideo);
    if (videoTracks.empty())
        return "Reverse: Failed to load video track";
    m_videoTrack = videoTracks.front();

    SourceColor color = sourceColor(*m_videoTrack);
    m_colorProperties = std::move(color.colorProperties);
    m_isHDR = color.isHDR;
    return std::nullopt;
}

std::optional<std::string> ReverseRun::read() {
    const auto videoOutput = std::make_shared<AVAssetReaderTrackOutput>(
        m_videoTrack, Dictionary{{kCVPixelBufferPixelFormatTypeKey, pixelFormat(m_isHDR)}});
    m_reader->addOutput(videoOutput);
    std::shared_ptr<AVAssetReaderTrackOutput> audioOutput;
    const std::vector<AVAssetTrackRef> audioTracks = m_asset->tracksWithMediaType(AVMediaTypeAudio);
    m_hasAudio = !audioTracks.empty();
    if (m_hasAudio) {
        audioOutput = std::make_shared<AVAssetReaderTrackOutput>(audioTracks.front(), readerAudioSettings);
        m_reader->addOutput(audioOutput);
    }

    m_reader->startReading();
    const std::stop_callback cancelReading(m_request.stop, [reader = m_reader] { reader->cancelReading(); });
    m_expectedFrameCount =
        static_cast<float>(CMTimeGetSeconds(m_asset->duration())) * m_videoTrack->nominalFrameRate();
    readVideo(*videoOutput);
    if (m_hasAudio)
        readAudio(*audioOutput);

    const AVAssetReaderStatus status = m_reader->status();
    m_reader->cancelReading();
    if (const std::optional<NSError> error = m_reader->error())
        debugLog(error->description());
    m_reader.reset();
    if (status != AVAssetReaderStatus::completed || m_frameTimestamps.empty())
        return "Failed to read video buffer";
    return std::nullopt;
}

void ReverseRun::readVideo(AVAssetReaderTrackOutput& output) {
    std::int64_t frameIndex = 0;
    while (const CMSampleBufferRef sample = output.copyNextSampleBuffer()) {
        m_frameTimestamps.push_back(CMSampleBufferGetPresentationTimeStamp(sample));
        if (const CVImageBufferRef image = CMSampleBufferGetImageBuffer(sample)) {
            VideoFrameManager::saveFrame(image, frameIndex);
            ++frameIndex;
            reportReading(frameIndex);
        }
    }
}

/// All sound stays in memory. No buffer keeps a time: the writer lays them end to end.
void ReverseRun::readAudio(AVAssetReaderTrackOutput& output) {
    while (const CMSampleBufferRef sample = output.copyNextSampleBuffer()) {
        CMSampleTimingInfo timing;
        std::size_t entries = 0;
        // Asked for no entries, it writes none: the record's times stay invalid, and so do the sums below.
        CMSampleBufferGetSampleTimingInfoArray(sample, 0, &timing, &entries);
        const CMTime duration = CMSampleBufferGetDuration(sample);
        const CMTime end = CMTimeAdd(timing.presentationTimeStamp, duration);
        timing.presentationTimeStamp = CMTimeSubtract(duration, end);
        m_audioTimings.push_back(timing);
        m_audioSampleBuffers.push_back(sample);
    }
}

std::optional<std::string> ReverseRun::configure() {
    m_videoInput = makeVideoInput();
    Result<std::shared_ptr<AVAssetWriter>> writer =
        AVAssetWriter::assetWriterWithURL(m_request.outputUrl, m_request.fileType);
    if (!writer || !(*writer)->canAddInput(*m_videoInput))
        return "Failed to init writer";
    m_writer = *writer;

    if (m_hasAudio) {
        if (m_audioSampleBuffers.empty())
            return "Failed to read audio buffer";
        m_audioInput = makeAudioInput();
        if (!m_writer->canAddInput(*m_audioInput))
            return "Failed to init audio writer";
    }

    const CGSize size = m_videoTrack->naturalSize();
    Dictionary attributes{{kCVPixelBufferPixelFormatTypeKey, pixelFormat(m_isHDR)},
                          {kCVPixelBufferWidthKey, size.width},
                          {kCVPixelBufferHeightKey, size.height},
                          {kCVPixelBufferIOSurfacePropertiesKey, Dictionary{}}};
    if (m_isHDR)
        attributes.emplace(kCVPixelBufferMetalCompatibilityKey, true);
    m_adaptor = std::make_unique<AVAssetWriterInputPixelBufferAdaptor>(m_videoInput, attributes);
    return std::nullopt;
}

Dictionary ReverseRun::videoSettings() const {
    const std::optional<std::int64_t> bitrate = VideoEncoder::originalBitrate(*m_asset);
    debugLog("originalBitrate: " + std::to_string(bitrate.value_or(0)));
    Dictionary compression{
        {AVVideoAverageBitRateKey, bitrate.value_or(m_isHDR ? fallbackHDRBitrate : fallbackBitrate)}};
    if (m_isHDR)
        compression.emplace(AVVideoProfileLevelKey, kVTProfileLevel_HEVC_Main10_AutoLevel);

    const CGSize size = m_videoTrack->naturalSize();
    Dictionary settings{{AVVideoCodecKey, AVVideoCodecTypeHEVC},
                        {AVVideoWidthKey, size.width},
                        {AVVideoHeightKey, size.height},
                        {AVVideoCompressionPropertiesKey, std::move(compression)}};
    if (m_colorProperties)
        settings.emplace(AVVideoColorPropertiesKey, *m_colorProperties);
    return settings;
}

std::shared_ptr<AVAssetWriterInput> ReverseRun::makeVideoInput() const {
    const auto& descriptions = m_videoTrack->formatDescriptions();
    auto input = std::make_shared<AVAssetWriterInput>(AVMediaTypeVideo, videoSettings(),
                                                      descriptions.empty() ? nullptr : descriptions.back());
    input->setTransform(fixedPreferredTransform(*m_videoTrack));
    input->setExpectsMediaDataInRealTime(false);
    return input;
}

std::shared_ptr<AVAssetWriterInput> ReverseRun::makeAudioInput() const {
    auto input = std::make_shared<AVAssetWriterInput>(
        AVMediaTypeAudio, writerAudioSettings,
        CMSampleBufferGetFormatDescription(m_audioSampleBuffers.front()));
    input->setExpectsMediaDataInRealTime(false);
    return input;
}

void ReverseRun::startWriting() {
    // One entry stands for both inputs together.
    m_group.enter();
    m_writer->addInput(m_videoInput);
    if (m_hasAudio)
        m_writer->addInput(m_audioInput);
    m_writer->startWriting();
    m_writer->startSessionAtSourceTime(m_frameTimestamps.front());

    // Before anything else can end the run, as that is another thread's.
    m_onStop.emplace(m_request.stop, [weak = weak_from_this(), queue = m_queue] {
        queue.async([weak] {
            if (const auto self = weak.lock())
                self->abandon();
        });
    });
    m_videoInput->requestMediaDataWhenReadyOnQueue(m_queue,
                                                   [self = shared_from_this()] { self->feedVideo(); });
    if (m_hasAudio)
        m_audioInput->requestMediaDataWhenReadyOnQueue(m_queue,
                                                       [self = shared_from_this()] { self->feedAudio(); });
    m_group.notify(m_queue, [self = shared_from_this()] { self->finishWriting(); });
}

/// The heart of the reversal: the last frame gets the first frame's time. The times themselves aren't
/// touched.
void ReverseRun::feedVideo() {
    const std::size_t count = m_frameTimestamps.size();
    for (std::size_t i = m_videoFrameIndex; i < count; ++i) {
        m_videoFrameIndex = i;
        if (isStopped() || !m_videoInput->isReadyForMoreMediaData())
            return;
        CVPixelBufferRef frame = VideoFrameManager::loadFrame(static_cast<std::int64_t>(count - 1 - i));
        if (!frame || !m_adaptor->appendPixelBuffer(std::move(frame), m_frameTimestamps[i])) {
            ++*m_request.missingFrames;
            debugLog("reverseVideo: frame " + std::to_string(count - 1 - i) + " is missing from the output");
        }
        reportWriting(i, count);
    }
    m_videoInput->markAsFinished();
    m_videoFinished = true;
    if (!m_hasAudio || m_audioFinished)
        m_group.leave();
}

/// Writes the buffers from the last down to the second; the very first is left out.
void ReverseRun::feedAudio() {
    const std::size_t last = m_audioSampleBuffers.size() - 1;
    for (std::size_t i = m_audioBufferIndex; i < last; ++i) {
        m_audioBufferIndex = i;
        if (isStopped() || !m_audioInput->isReadyForMoreMediaData())
            return;
        const CMSampleBufferRef reversed =
            reversedSampleBuffer(m_audioSampleBuffers[last - i], {&m_audioTimings[i], 1});
        if (reversed && !m_audioInput->appendSampleBuffer(reversed))
            break;
    }
    m_audioInput->markAsFinished();
    m_audioFinished = true;
    if (m_videoFinished)
        m_group.leave();
}

void ReverseRun::finishWriting() {
    if (m_isEnded)
        return;
    m_writer->finishWritingWithCompletionHandler([self = shared_from_this()] {
        if (self->m_isEnded.exchange(true))
            return;
        VideoFrameManager::removeAllFrames();
        if (self->m_writer->status() == AVAssetWriterStatus::completed)
            self->complete(true, std::nullopt);
        else
            self->complete(false, "Failed to write: " + describe(self->m_writer->error()));
    });
}

void ReverseRun::abandon() {
    if (m_isEnded.exchange(true))
        return;
    m_writer->abandonWriting();
    VideoFrameManager::removeAllFrames();
    // A group that is never left would keep the finishing step, and with it the run.
    if (!m_videoFinished || (m_hasAudio && !m_audioFinished))
        m_group.leave();
    complete(false, stoppedMessage);
}

void ReverseRun::reportReading(std::int64_t savedFrames) {
    m_updateProgress(static_cast<float>(savedFrames) / m_expectedFrameCount * 0.5F * weight());
}

void ReverseRun::reportWriting(std::size_t frame, std::size_t count) {
    m_updateProgress((static_cast<float>(frame) / static_cast<float>(count) * 0.5F + 0.5F) * weight());
}

} // namespace anadrome

#include "Platform/AVFoundation/Libav/WriterSession.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/AACEncoder.h"
#include "Platform/AVFoundation/Libav/H264Encoder.h"
#include "Platform/AVFoundation/Libav/HEVCEncoder.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/Print.h"

#include <algorithm>

namespace anadrome::libav {

namespace {

// Raw pictures are large, and the encoder holds some of its own.
constexpr std::size_t picturesQueued = 2;
constexpr std::size_t soundBuffersQueued = 64;
constexpr CMTime allowedLead{1, 1, kCMTimeFlags_Valid, 0};

} // namespace

std::shared_ptr<WriterLane> WriterSession::addLane(const AVAssetWriterInput& input) {
    const bool video = input.mediaType() == AVMediaTypeVideo;
    std::unique_ptr<TrackEncoder> encoder;
    if (!video)
        encoder = std::make_unique<AACEncoder>(input.outputSettings());
    else if (*findString(input.outputSettings(), AVVideoCodecKey) == AVVideoCodecTypeH264)
        encoder = std::make_unique<H264Encoder>(input.outputSettings(), input.sourceFormatHint());
    else
        encoder = std::make_unique<HEVCEncoder>(input.outputSettings(), input.sourceFormatHint());
    auto lane = std::make_shared<WriterLane>(std::move(encoder), video ? picturesQueued : soundBuffersQueued);
    m_lanes.push_back(lane);
    return lane;
}

bool WriterSession::start(const std::vector<CGAffineTransform>& transforms) {
    m_transforms = transforms;
    m_muxer = std::make_unique<MovieMuxer>(m_url, m_fileType, m_lanes.size(), std::move(m_layout));
    std::optional<NSError> error = m_muxer->open();
    const std::lock_guard lock(m_mutex);
    m_status = AVAssetWriterStatus::writing;
    if (error)
        failLocked(*error);
    for (std::size_t i = 0; i < m_lanes.size(); ++i)
        DispatchQueue::global(QualityOfService::userInitiated).async([self = shared_from_this(), i] {
            self->runLane(i);
        });
    return !error;
}

void WriterSession::startSession(const CMTime& time) {
    const std::lock_guard lock(m_mutex);
    m_sessionStart = time;
    for (const auto& lane : m_lanes)
        lane->position = time;
}

void WriterSession::finish(std::function<void()> handler) {
    std::vector<std::function<void()>> released;
    const std::lock_guard lock(m_mutex);
    m_finishing = true;
    m_completion = std::move(handler);
    for (const auto& lane : m_lanes)
        released.push_back(finishLaneLocked(*lane));
    const bool allDrained = std::ranges::all_of(m_lanes, [](const auto& lane) { return lane->drained; });
    if (allDrained)
        DispatchQueue::global(QualityOfService::userInitiated).async([self = shared_from_this()] {
            self->close();
        });
}

void WriterSession::cancel() {
    std::vector<std::function<void()>> released;
    const std::lock_guard lock(m_mutex);
    const bool isWriting = m_status == AVAssetWriterStatus::writing;
    if (!isWriting && m_status != AVAssetWriterStatus::failed)
        return;
    if (isWriting)
        m_status = AVAssetWriterStatus::cancelled;
    // Of a failed writer, too: the requests may hold whoever holds the writer.
    for (const auto& lane : m_lanes) {
        lane->queue.clear();
        released.push_back(finishLaneLocked(*lane));
    }
    if (isWriting)
        NSFileManager::defaultManager().removeItemAtPath(m_url.path());
}

void WriterSession::waitForEncoders() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] {
        return std::ranges::all_of(m_lanes, [](const auto& lane) { return lane->drained; });
    });
}

AVAssetWriterStatus WriterSession::status() const {
    const std::lock_guard lock(m_mutex);
    return m_status;
}

std::optional<NSError> WriterSession::error() const {
    const std::lock_guard lock(m_mutex);
    return m_error;
}

bool WriterSession::isReady(const WriterLane& lane) const {
    const std::lock_guard lock(m_mutex);
    return readyLocked(lane);
}

bool WriterSession::readyLocked(const WriterLane& lane) const {
    if (m_status != AVAssetWriterStatus::writing)
        return m_status == AVAssetWriterStatus::failed;
    if (lane.finished || lane.queue.size() >= lane.capacity)
        return false;
    return std::ranges::none_of(m_lanes, [&](const auto& other) {
        return other.get() != &lane && !other->finished &&
               CMTimeCompare(CMTimeSubtract(lane.position, other->position), allowedLead) > 0;
    });
}

void WriterSession::request(WriterLane& lane, const DispatchQueue& queue, std::function<void()> block) {
    const std::lock_guard lock(m_mutex);
    if (lane.request)
        fatalError("AVAssetWriterInput: media data was requested twice");
    if (lane.finished)
        return;
    lane.requestQueue = queue;
    lane.request = std::move(block);
    wakeRequestsLocked();
}

void WriterSession::wakeRequestsLocked() {
    for (const auto& lane : m_lanes)
        wakeRequestLocked(lane);
}

/// Sends the lane's block to its queue if it is due: one at a time, and after a failure once more.
void WriterSession::wakeRequestLocked(const std::shared_ptr<WriterLane>& lane) {
    const bool failed = m_status == AVAssetWriterStatus::failed;
    if (!lane->request || lane->requestInFlight || lane->finished || !readyLocked(*lane) ||
        (failed && lane->toldOfFailure))
        return;
    lane->requestInFlight = true;
    lane->toldOfFailure = failed;
    lane->requestQueue->async([self = shared_from_this(), lane, block = lane->request] {
        {
            const std::lock_guard lock(self->m_mutex);
            if (lane->finished)
                return;
        }
        block();
        const std::lock_guard lock(self->m_mutex);
        lane->requestInFlight = false;
        self->wakeRequestLocked(lane);
    });
}

bool WriterSession::append(WriterLane& lane, EncoderInput input) {
    const std::lock_guard lock(m_mutex);
    if (m_status != AVAssetWriterStatus::writing)
        return false;
    if (lane.finished || CMTIME_IS_INVALID(m_sessionStart))
        fatalError("AVAssetWriterInput: a sample was appended outside of a session");
    if (!acceptTimeLocked(lane, input))
        return false;
    lane.queue.push_back(std::move(input));
    m_changed.notify_all();
    wakeRequestsLocked();
    return true;
}

/// Moves the lane's position on by the sample. A picture's time must be numeric and rise; sound may have
/// none.
bool WriterSession::acceptTimeLocked(WriterLane& lane, EncoderInput& input) {
    if (input.sound) {
        const CMFormatDescriptionRef format = CMSampleBufferGetFormatDescription(input.sound);
        const auto rate = static_cast<std::int32_t>(format ? format->audio.sampleRate : 0);
        const CMTime duration = CMTimeMake(CMSampleBufferGetNumSamples(input.sound), rate);
        if (CMTIME_IS_NUMERIC(input.time))
            lane.position = CMTimeMaximum(lane.position, CMTimeAdd(input.time, duration));
        else if (CMTIME_IS_NUMERIC(duration))
            lane.position = CMTimeAdd(lane.position, duration);
        return true;
    }
    const bool rises = CMTIME_IS_NUMERIC(input.time) &&
                       (CMTIME_IS_INVALID(lane.lastTime) || CMTimeCompare(input.time, lane.lastTime) > 0);
    if (!rises) {
        failLocked(makeAVError(AVErrorUnknown,
                               NSError("MediaLibraryErrorDomain", 0, "Times of pictures must rise")));
        return false;
    }
    lane.lastTime = input.time;
    lane.position = CMTimeMaximum(lane.position, input.time);
    return true;
}

void WriterSession::markAsFinished(WriterLane& lane) {
    std::function<void()> released;
    const std::lock_guard lock(m_mutex);
    released = finishLaneLocked(lane);
    wakeRequestsLocked();
}

std::function<void()> WriterSession::finishLaneLocked(WriterLane& lane) {
    lane.finished = true;
    m_changed.notify_all();
    return std::exchange(lane.request, nullptr);
}

void WriterSession::failLocked(NSError error) {
    if (m_status != AVAssetWriterStatus::writing)
        return;
    m_status = AVAssetWriterStatus::failed;
    m_error = std::move(error);
    for (const auto& lane : m_lanes)
        lane->queue.clear();
    m_changed.notify_all();
    wakeRequestsLocked();
}

void WriterSession::runLane(std::size_t index) {
    std::optional<NSError> failure = encodeLane(index);
    // Closing it ends the threads that the encoder has of its own.
    m_lanes[index]->encoder.reset();
    laneEnded(*m_lanes[index], std::move(failure));
}

std::optional<NSError> WriterSession::encodeLane(std::size_t index) {
    WriterLane& lane = *m_lanes[index];
    const PacketSink sink = [this, index](AVPacket& packet) -> std::optional<NSError> {
        if (status() == AVAssetWriterStatus::cancelled)
            return makeAVError(AVErrorOperationCancelled);
        return m_muxer->write(index, packet);
    };
    bool opened = false;
    while (std::optional<EncoderInput> input = take(lane)) {
        if (!opened) {
            const CMTime start = [this] {
                const std::lock_guard lock(m_mutex);
                return m_sessionStart;
            }();
            if (std::optional<NSError> error = lane.encoder->open(*input, start))
                return error;
            if (auto error = m_muxer->begin(index, *lane.encoder, m_transforms[index]))
                return error;
            opened = true;
        }
        if (std::optional<NSError> error = lane.encoder->encode(*input, sink))
            return error;
    }
    if (status() != AVAssetWriterStatus::writing)
        return std::nullopt;
    if (opened)
        if (std::optional<NSError> error = lane.encoder->finish(sink))
            return error;
    return m_muxer->end(index);
}

/// Waits for the lane's next sample; empty when it has ended or the writer no longer writes.
std::optional<EncoderInput> WriterSession::take(WriterLane& lane) {
    std::unique_lock lock(m_mutex);
    const auto stopped = [this] { return m_status != AVAssetWriterStatus::writing; };
    m_changed.wait(lock, [&] { return stopped() || lane.finished || !lane.queue.empty(); });
    if (stopped() || lane.queue.empty())
        return std::nullopt;
    EncoderInput input = std::move(lane.queue.front());
    lane.queue.pop_front();
    wakeRequestsLocked();
    return input;
}

void WriterSession::laneEnded(WriterLane& lane, std::optional<NSError> failure) {
    bool last = false;
    {
        const std::lock_guard lock(m_mutex);
        if (failure)
            failLocked(*failure);
        lane.drained = true;
        m_changed.notify_all();
        last = m_finishing && std::ranges::all_of(m_lanes, [](const auto& other) { return other->drained; });
    }
    if (last)
        close();
}

/// Closes the file when all lanes have ended, and tells the outcome.
void WriterSession::close() {
    std::function<void()> completion;
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_closed, true))
            return;
        completion = std::move(m_completion);
    }
    const bool writing = status() == AVAssetWriterStatus::writing;
    const std::optional<NSError> failure = writing ? m_muxer->finish() : std::nullopt;
    m_muxer.reset();
    {
        const std::lock_guard lock(m_mutex);
        if (failure)
            failLocked(*failure);
        else if (m_status == AVAssetWriterStatus::writing)
            m_status = AVAssetWriterStatus::completed;
    }
    if (completion)
        completion();
}

} // namespace anadrome::libav

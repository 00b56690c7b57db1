#include "Platform/AVFoundation/AVAssetWriter.h"

#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/WriterSession.h"
#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <cerrno>
#include <string>

namespace anadrome {

namespace {

// What rounds to a pixel.
constexpr double smallestSide = 0.5;

bool isAtLeast(double least, const Dictionary& settings, const char* key) {
    return findNumber(settings, key).value_or(0) >= least;
}

bool canEncodeVideo(const Dictionary& settings) {
    const std::string* codec = findString(settings, AVVideoCodecKey);
    return codec && (*codec == AVVideoCodecTypeHEVC || *codec == AVVideoCodecTypeH264) &&
           isAtLeast(smallestSide, settings, AVVideoWidthKey) &&
           isAtLeast(smallestSide, settings, AVVideoHeightKey);
}

bool canEncodeAudio(const Dictionary& settings) {
    return findNumber(settings, AVFormatIDKey) == double{kAudioFormatMPEG4AAC} &&
           isAtLeast(1, settings, AVSampleRateKey) && isAtLeast(1, settings, AVNumberOfChannelsKey);
}

void expectStatus(AVAssetWriterStatus status, AVAssetWriterStatus expected) {
    if (status != expected)
        fatalError("AVAssetWriter: Cannot call method when status is " +
                   std::to_string(static_cast<int>(status)));
}

} // namespace

Result<std::shared_ptr<AVAssetWriter>> AVAssetWriter::assetWriterWithURL(const URL& url,
                                                                         AVFileType fileType) {
    if (url.empty())
        return makeAVError(AVErrorUnknown, NSError::posix(ENOENT));
    return std::shared_ptr<AVAssetWriter>(new AVAssetWriter(url, fileType));
}

AVAssetWriter::AVAssetWriter(URL url, AVFileType fileType)
    : m_session(std::make_shared<libav::WriterSession>(std::move(url), fileType)) {}

AVAssetWriter::~AVAssetWriter() {
    if (!m_finishing)
        m_session->cancel();
}

bool AVAssetWriter::canAddInput(const AVAssetWriterInput& input) const {
    const bool taken = std::ranges::any_of(
        m_inputs, [&](const auto& other) { return other->mediaType() == input.mediaType(); });
    const bool supported = input.mediaType() == AVMediaTypeVideo ? canEncodeVideo(input.outputSettings())
                                                                 : canEncodeAudio(input.outputSettings());
    return status() == AVAssetWriterStatus::unknown && !taken && supported;
}

void AVAssetWriter::addInput(const std::shared_ptr<AVAssetWriterInput>& input) {
    if (!canAddInput(*input))
        fatalError("AVAssetWriter: an input was added that can't be");
    m_inputs.push_back(input);
}

void AVAssetWriter::setMetadata(std::vector<AVMetadataItem> metadata) {
    expectStatus(status(), AVAssetWriterStatus::unknown);
    m_session->setMetadata(std::move(metadata));
}

void AVAssetWriter::setShouldOptimizeForNetworkUse(bool should) {
    expectStatus(status(), AVAssetWriterStatus::unknown);
    m_session->setIndexFirst(should);
}

bool AVAssetWriter::startWriting() {
    expectStatus(status(), AVAssetWriterStatus::unknown);
    std::vector<CGAffineTransform> transforms;
    for (const auto& input : m_inputs) {
        input->m_lane = m_session->addLane(*input);
        input->m_session = m_session;
        transforms.push_back(input->transform());
    }
    return m_session->start(transforms);
}

void AVAssetWriter::startSessionAtSourceTime(const CMTime& time) {
    if (status() == AVAssetWriterStatus::unknown)
        expectStatus(status(), AVAssetWriterStatus::writing);
    m_session->startSession(time);
}

void AVAssetWriter::finishWritingWithCompletionHandler(std::function<void()> handler) {
    if (status() == AVAssetWriterStatus::unknown || m_finishing)
        fatalError("AVAssetWriter: finishing a writer that isn't writing");
    m_finishing = true;
    m_session->finish(std::move(handler));
}

void AVAssetWriter::cancelWriting() {
    if (status() != AVAssetWriterStatus::writing)
        return;
    abandonWriting();
    m_session->waitForEncoders();
}

void AVAssetWriter::abandonWriting() {
    m_session->cancel();
}

AVAssetWriterStatus AVAssetWriter::status() const {
    return m_session->status();
}

std::optional<NSError> AVAssetWriter::error() const {
    return m_session->error();
}

} // namespace anadrome

#include "Platform/AVFoundation/AVAssetReaderTrackOutput.h"

#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/TrackPipeline.h"

namespace anadrome {

namespace {

bool isFalseOrMissing(const Dictionary& settings, const char* key) {
    const Value* value = find(settings, key);
    return !value || (value->asBool() && !*value->asBool());
}

bool asksFor16BitPCM(const Dictionary& settings) {
    return findNumber(settings, AVFormatIDKey) == double{kAudioFormatLinearPCM} &&
           findNumber(settings, AVLinearPCMBitDepthKey).value_or(16) == 16 &&
           isFalseOrMissing(settings, AVLinearPCMIsBigEndianKey) &&
           isFalseOrMissing(settings, AVLinearPCMIsFloatKey);
}

} // namespace

AVAssetReaderTrackOutput::AVAssetReaderTrackOutput(AVAssetTrackRef track, Dictionary outputSettings)
    : m_track(std::move(track)), m_settings(std::move(outputSettings)) {}

std::optional<NSError> AVAssetReaderTrackOutput::start() {
    libav::DecodedForm form;
    if (m_track->mediaType() == AVMediaTypeVideo)
        form.pixelFormat =
            static_cast<OSType>(findNumber(m_settings, kCVPixelBufferPixelFormatTypeKey).value_or(0));
    const bool supported = m_track->mediaType() == AVMediaTypeVideo
                               ? form.pixelFormat == kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange ||
                                     form.pixelFormat == kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange
                               : asksFor16BitPCM(m_settings);
    if (!supported)
        return makeAVError(AVErrorUnsupportedOutputSettings);

    Result<std::shared_ptr<libav::TrackPipeline>> pipeline = libav::TrackPipeline::start(m_track, form);
    if (!pipeline)
        return pipeline.error();
    m_pipeline = *pipeline;
    return std::nullopt;
}

CMSampleBufferRef AVAssetReaderTrackOutput::copyNextSampleBuffer() {
    if (!m_pipeline) {
        m_ended = true;
        return nullptr;
    }
    CMSampleBufferRef sample = m_pipeline->next();
    if (!sample)
        m_ended = true;
    return sample;
}

void AVAssetReaderTrackOutput::cancel() {
    if (m_pipeline)
        m_pipeline->cancel();
}

std::optional<NSError> AVAssetReaderTrackOutput::error() const {
    return m_pipeline && m_ended ? m_pipeline->error() : std::nullopt;
}

} // namespace anadrome

#include "Platform/AVFoundation/AVAssetWriterInput.h"

#include "Platform/AVFoundation/Libav/WriterSession.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

AVAssetWriterInput::AVAssetWriterInput(AVMediaType mediaType, Dictionary outputSettings,
                                       CMFormatDescriptionRef sourceFormatHint)
    : m_mediaType(mediaType), m_outputSettings(std::move(outputSettings)),
      m_sourceFormatHint(std::move(sourceFormatHint)) {}

libav::WriterSession& AVAssetWriterInput::session() const {
    if (!m_session)
        fatalError("AVAssetWriterInput: used before its writer was started");
    return *m_session;
}

bool AVAssetWriterInput::isReadyForMoreMediaData() const {
    return m_session && m_session->isReady(*m_lane);
}

void AVAssetWriterInput::requestMediaDataWhenReadyOnQueue(const DispatchQueue& queue,
                                                          std::function<void()> block) {
    session().request(*m_lane, queue, std::move(block));
}

bool AVAssetWriterInput::appendSampleBuffer(const CMSampleBufferRef& sample) {
    libav::EncoderInput input;
    input.time = CMSampleBufferGetPresentationTimeStamp(sample);
    input.pixels = CMSampleBufferGetImageBuffer(sample);
    if (input.pixels)
        input.duration = CMSampleBufferGetDuration(sample);
    else
        input.sound = sample;
    if ((input.pixels != nullptr) != (m_mediaType == AVMediaTypeVideo))
        fatalError("AVAssetWriterInput: a sample of another medium was appended");
    return session().append(*m_lane, std::move(input));
}

bool AVAssetWriterInput::append(CVPixelBufferRef pixels, const CMTime& time) {
    return session().append(*m_lane, {std::move(pixels), time, kCMTimeInvalid, nullptr});
}

void AVAssetWriterInput::markAsFinished() {
    session().markAsFinished(*m_lane);
}

} // namespace anadrome

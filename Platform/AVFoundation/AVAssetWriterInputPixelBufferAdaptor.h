#pragma once

#include "Platform/AVFoundation/AVAssetWriterInput.h"

#include <memory>

namespace anadrome {

/// Appends bare pictures with their times to a video input.
class AVAssetWriterInputPixelBufferAdaptor {
public:
    /// The attributes describe the buffers to come. Any buffer of a supported format is taken all the same,
    /// and scaled to the input's size where it has another.
    AVAssetWriterInputPixelBufferAdaptor(std::shared_ptr<AVAssetWriterInput> input, const Dictionary&)
        : m_input(std::move(input)) {}

    /// False if the writer isn't writing, or the time isn't numeric or not above the last one; those times
    /// also fail the writer. The buffer must not change any more.
    bool appendPixelBuffer(CVPixelBufferRef pixels, const CMTime& presentationTime) {
        return m_input->append(std::move(pixels), presentationTime);
    }

private:
    std::shared_ptr<AVAssetWriterInput> m_input;
};

} // namespace anadrome

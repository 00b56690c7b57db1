#pragma once

#include "Platform/AVFoundation/AVMutableVideoCompositionInstruction.h"

namespace anadrome {

/// How the pictures of a movie come about from its tracks: one every frame duration, on a canvas of the
/// render size, by the instruction that covers its time. The instructions must follow one another without a
/// gap.
class AVMutableVideoComposition {
public:
    void setFrameDuration(const CMTime& frameDuration) { m_frameDuration = frameDuration; }
    /// In square pixels.
    void setRenderSize(CGSize renderSize) { m_renderSize = renderSize; }
    void setInstructions(std::vector<AVMutableVideoCompositionInstruction> instructions) {
        m_instructions = std::move(instructions);
    }

    const CMTime& frameDuration() const { return m_frameDuration; }
    CGSize renderSize() const { return m_renderSize; }
    const std::vector<AVMutableVideoCompositionInstruction>& instructions() const { return m_instructions; }

private:
    CMTime m_frameDuration = kCMTimeZero;
    CGSize m_renderSize;
    std::vector<AVMutableVideoCompositionInstruction> m_instructions;
};

} // namespace anadrome

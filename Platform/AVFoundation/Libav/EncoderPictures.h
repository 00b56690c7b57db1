#pragma once

#include "Platform/AVFoundation/Libav/PictureConverter.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

namespace anadrome::libav {

/// Turns pixel buffers, biplanar ones or planar ones of even sizes, into the planar frames that an encoder
/// takes: 8 or 10 bits, video range, one fixed size, one fixed colour. Buffers of another size are scaled,
/// buffers of another colour are converted; untagged ones are taken for what untagged video of their height
/// is. One thread at a time.
class EncoderPictures {
public:
    /// A size of even numbers, a planar 4:2:0 format, and a colour; an unspecified colour stays as it comes.
    explicit EncoderPictures(const PictureForm& target) : m_target(target) {}

    /// The frame belongs to this object and is good until the next call; the encoder may keep references to
    /// it.
    Result<AVFrame*> convert(const CVPixelBufferRef& pixels);

private:
    std::optional<NSError> repack(const CVPixelBufferRef& pixels);
    PictureForm formOf(const CVPixelBufferRef& pixels) const;

    const PictureForm m_target;
    Owned<AVFrame> m_planar;
    std::unique_ptr<PictureConverter> m_converter;
};

} // namespace anadrome::libav

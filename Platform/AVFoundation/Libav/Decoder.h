#pragma once

#include "Platform/AVFoundation/Libav/InputFile.h"

#include <optional>

namespace anadrome::libav {

/// Whether there is a decoder here that accepts the stream's parameters.
bool canDecode(const AVStream* stream);

/// Decodes one stream of a file of its own, frame after frame in presentation order. Damaged packets are
/// skipped; a file that breaks off ends the stream there. One thread at a time.
class Decoder {
public:
    static Result<Decoder> open(const URL& url, int streamIndex);

    /// Fills the frame with the next picture or run of sound. False at the end and after a failure.
    bool next(AVFrame* frame);

    /// Set when the file couldn't be read on, other than by ending.
    const std::optional<NSError>& error() const { return m_error; }

    /// The presentation time of a frame from next(), as near to the file's word as it has one.
    CMTime time(const AVFrame& frame) const;
    const InputFile& file() const { return m_file; }
    int streamIndex() const { return m_streamIndex; }

private:
    Decoder(InputFile file, int streamIndex, Owned<AVCodecContext> codec);

    /// Gives the decoder its next packet, or tells it that there is none.
    void feed();

    InputFile m_file;
    int m_streamIndex;
    Owned<AVCodecContext> m_codec;
    Owned<AVPacket> m_packet;
    bool m_drained = false;
    std::optional<NSError> m_error;
};

} // namespace anadrome::libav

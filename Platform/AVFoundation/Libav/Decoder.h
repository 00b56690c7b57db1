#pragma once

#include "Platform/AVFoundation/Libav/InputFile.h"

#include <optional>

namespace anadrome::libav {

/// Whether there is a decoder here that accepts the stream's parameters.
bool canDecode(const AVStream* stream);

/// An open decoder for the stream's packets, on that many threads.
Result<Owned<AVCodecContext>> openDecoder(const AVStream* stream, int threads);

/// Decodes one stream of a file of its own, frame after frame in presentation order. Damaged packets are
/// skipped; a file that breaks off ends the stream there. Starts at the file's beginning. One thread at a
/// time.
class Decoder {
public:
    static Result<Decoder> open(const URL& url, int streamIndex);

    /// Goes to where decoding can begin for the picture on screen at the time: a key frame before it that
    /// isn't shown later, or else the file's start. next() goes on from there and leaves out the pictures
    /// that are coded after that key frame and shown before it. The time of that frame, as far as the file
    /// tells it; an error if there is no going on.
    Result<CMTime> seek(const CMTime& time);

    /// Fills the frame with the next picture or run of sound. False at the end and after a failure.
    bool next(AVFrame* frame);

    /// Set when the file couldn't be read on, other than by ending.
    const std::optional<NSError>& error() const { return m_error; }

    /// The presentation time of a frame from next(), as near to the file's word as it has one.
    CMTime time(const AVFrame& frame) const;
    const InputFile& file() const { return m_file; }
    int streamIndex() const { return m_streamIndex; }

private:
    Decoder(InputFile file, URL url, int streamIndex, Owned<AVCodecContext> codec);

    /// Gives the decoder its next packet, or tells it that there is none.
    void feed();
    /// Reads on to the stream's next packet, or its next key frame, and holds it for feed().
    bool holdPacket(bool keyFrame);
    std::optional<NSError> moveTo(const CMTime& time);
    std::optional<NSError> reopen();

    InputFile m_file;
    URL m_url;
    int m_streamIndex;
    Owned<AVCodecContext> m_codec;
    Owned<AVPacket> m_packet;
    bool m_holdsPacket = false;
    bool m_drained = false;
    /// In the stream's ticks; pictures before it are left out.
    std::int64_t m_firstShown = AV_NOPTS_VALUE;
    std::optional<NSError> m_error;
};

} // namespace anadrome::libav

#pragma once

#include "Platform/AVFoundation/Libav/InputFile.h"

#include <optional>

namespace anadrome::libav {

/// Whether there is a decoder here that accepts the stream's parameters.
bool canDecode(const AVStream* stream);

/// An open decoder for the stream's packets, on that many threads.
Result<Owned<AVCodecContext>> openDecoder(const AVStream* stream, int threads);

/// Decodes one stream of a file of its own, frame after frame in presentation order. What the file's edits
/// leave out is decoded where other frames need it, and never given out: pictures before an edit's start or
/// behind its end, and the samples there of a run of sound. Damaged packets are skipped; a file that breaks
/// off ends the stream there. Starts at the file's beginning. One thread at a time.
class Decoder {
public:
    static Result<Decoder> open(const URL& url, int streamIndex);

    /// Goes to where decoding can begin for the picture on screen at the time: a key frame before it that
    /// isn't shown later, or else the file's start. next() goes on from there and leaves out the pictures
    /// that are coded after that key frame and shown before it. For sound, some comes before the time,
    /// without which a decoder wouldn't be right there. The time of that frame, as far as the file tells it,
    /// or of the edit's start if that comes later; an error if there is no going on.
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

    bool isSound() const { return m_file.stream(m_streamIndex)->codecpar->codec_type == AVMEDIA_TYPE_AUDIO; }
    AVRational timeBase() const { return m_file.stream(m_streamIndex)->time_base; }
    const std::vector<Edit>& edits() const { return m_file.edits(m_streamIndex); }
    /// Goes to where decoding begins for the start of the edit that is next.
    bool enterEdit();
    /// False.
    bool leaveEdit();
    /// Cuts the frame to the edit and gives it the time when it is shown. False if nothing of it is left.
    bool fitToEdit(AVFrame& frame, const Edit& edit) const;

    // These know the media's own times alone.
    Result<CMTime> seekMedia(const CMTime& time);
    bool nextOfMedia(AVFrame* frame);
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
    /// The edit that is being decoded, if decoding has gone there.
    std::size_t m_edit = 0;
    bool m_isInEdit = false;
};

} // namespace anadrome::libav

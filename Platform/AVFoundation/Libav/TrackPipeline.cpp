#include "Platform/AVFoundation/Libav/TrackPipeline.h"

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/PictureReader.h"
#include "Platform/AVFoundation/Libav/SoundReader.h"
#include "Platform/Dispatch/DispatchQueue.h"

#include <malloc.h>

namespace anadrome::libav {

namespace {

// Pictures are large: a handful in all, counting the one in the taker's hands.
constexpr std::size_t picturesAhead = 3;
constexpr std::size_t soundBuffersAhead = 64;

Result<Decoder> openAt(const AVAssetTrack& track, const CMTime& from) {
    Result<Decoder> decoder = Decoder::open(track.url(), track.streamIndex());
    if (!decoder || CMTimeCompare(from, kCMTimeZero) <= 0)
        return decoder;
    if (const Result<CMTime> sought = decoder->seek(from); !sought)
        return sought.error();
    return decoder;
}

} // namespace

Result<std::shared_ptr<TrackPipeline>> TrackPipeline::start(const AVAssetTrackRef& track, DecodedForm form,
                                                            const CMTime& from) {
    Result<Decoder> opened = openAt(*track, from);
    if (!opened)
        return opened.error();
    auto decoder = std::make_shared<Decoder>(std::move(*opened));
    const bool video = track->mediaType() == AVMediaTypeVideo;
    std::shared_ptr<TrackPipeline> pipeline(new TrackPipeline(video ? picturesAhead : soundBuffersAhead));
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([pipeline, decoder, track, form, video]() mutable {
            if (video)
                pipeline->run(*decoder, PictureReader(track->formatDescriptions().front(), form.pixelFormat));
            else
                pipeline->run(*decoder, SoundReader());
            // The decoder's pictures leave tens of megabytes free but scattered, and the encoder that comes
            // next would add its own to them.
            decoder.reset();
            ::malloc_trim(0);
        });
    return pipeline;
}

template <typename Converter>
void TrackPipeline::run(Decoder& decoder, Converter converter) {
    const Owned<AVFrame> frame = makeFrame();
    const auto deliver = [this](CMSampleBufferRef sample) { return m_ready.push(std::move(sample)); };
    bool wanted = true;
    while (wanted && decoder.next(frame.get())) {
        wanted = converter.convert(decoder, *frame, deliver);
        av_frame_unref(frame.get());
    }
    if (decoder.error()) {
        const std::lock_guard lock(m_mutex);
        m_error = decoder.error();
    }
    m_ready.close();
}

CMSampleBufferRef TrackPipeline::next() {
    return m_ready.pop().value_or(nullptr);
}

std::optional<NSError> TrackPipeline::error() const {
    const std::lock_guard lock(m_mutex);
    return m_error;
}

} // namespace anadrome::libav

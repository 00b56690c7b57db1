#include "Platform/AVFoundation/Libav/TrackFacts.h"

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/HdrMetadata.h"
#include "Platform/AVFoundation/Libav/LibavVersions.h"
#include "Platform/AVFoundation/Libav/StreamTiming.h"
#include "Platform/CoreVideo/CVImageBufferKeys.h"

#include <cmath>

extern "C" {
#include <libavutil/bswap.h>
}

namespace anadrome::libav {

namespace {

bool isPresented(const AVStream* stream) {
    constexpr int stillPictures = AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS;
    const AVCodecParameters* parameters = stream->codecpar;
    const bool hasPictures =
        parameters->codec_type == AVMEDIA_TYPE_VIDEO && parameters->width > 0 && parameters->height > 0;
    return (hasPictures || parameters->codec_type == AVMEDIA_TYPE_AUDIO) &&
           !(stream->disposition & stillPictures);
}

/// Moves the shown picture's top left corner to the origin. Many files turn a picture and don't move it back
/// into view, or move it by the wrong side.
CGAffineTransform movedIntoView(CGAffineTransform t, CGSize size) {
    t.tx = -std::min(t.a * size.width, 0.0) - std::min(t.c * size.height, 0.0);
    t.ty = -std::min(t.b * size.width, 0.0) - std::min(t.d * size.height, 0.0);
    return t;
}

/// The track matrix of the file: nine terms, the outer column in 2.30 and the rest in 16.16 fixed point.
CGAffineTransform transformOf(const AVStream* stream, CGSize naturalSize) {
    const auto data = sideData(*stream, AV_PKT_DATA_DISPLAYMATRIX);
    if (data.size() < 9 * sizeof(std::int32_t))
        return CGAffineTransformIdentity;
    const auto* m = reinterpret_cast<const std::int32_t*>(data.data());
    constexpr double one = 1 << 16;
    const CGAffineTransform transform{m[0] / one, m[1] / one, m[3] / one, m[4] / one, m[6] / one, m[7] / one};
    const bool collapses = transform.a * transform.d == transform.b * transform.c;
    return collapses ? CGAffineTransformIdentity : movedIntoView(transform, naturalSize);
}

/// Square pixels of the stored height. Aspects that can't be meant are ignored.
CGSize naturalSizeOf(const InputFile& file, AVStream* stream) {
    const AVRational aspect = av_guess_sample_aspect_ratio(file.context(), stream, nullptr);
    const double stretch = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1;
    const bool plausible = stretch > 0.1 && stretch < 10;
    return {std::max(1.0, std::round(stream->codecpar->width * (plausible ? stretch : 1))),
            static_cast<double>(stream->codecpar->height)};
}

double framesPerSecond(const AVStream* stream, const StreamTiming& timing) {
    const double seconds = CMTimeGetSeconds(CMTimeSubtract(timing.end, timing.start));
    if (timing.sampleCount > 0 && seconds > 0)
        return static_cast<double>(timing.sampleCount) / seconds;
    const AVRational rate = stream->avg_frame_rate.num > 0 ? stream->avg_frame_rate : stream->r_frame_rate;
    return rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 30;
}

/// Headers lie, and a single picture may have no length: a track with samples gets a positive duration.
void mendTiming(StreamTiming& timing, const AVStream* stream) {
    if (!CMTIME_IS_NUMERIC(timing.start))
        timing.start = kCMTimeZero;
    if (CMTIME_IS_NUMERIC(timing.end) && CMTimeCompare(timing.end, timing.start) > 0)
        return;
    timing.end = timing.start;
    if (timing.sampleCount > 0 && stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
        const double seconds = static_cast<double>(timing.sampleCount) / framesPerSecond(stream, timing);
        timing.end = CMTimeAdd(timing.start, CMTimeMakeWithSeconds(seconds, 90000));
    }
}

CMFormatDescriptionRef describeVideo(const InputFile& file, int index, double frameRate) {
    const AVStream* stream = file.stream(index);
    CMFormatDescription description;
    description.mediaType = CMMediaType::video;
    description.mediaSubType = av_bswap32(stream->codecpar->codec_tag);
    description.dimensions = {stream->codecpar->width, stream->codecpar->height};
    description.frameRateHint = frameRate;
    Dictionary extensions = attachmentsFor(file.colorTags(index));
    if (!extensions.empty()) {
        extensions.merge(hdrExtensions(stream));
        description.extensions = std::move(extensions);
    }
    return std::make_shared<const CMFormatDescription>(std::move(description));
}

CMFormatDescriptionRef describeAudio(const AVStream* stream) {
    CMFormatDescription description;
    description.mediaType = CMMediaType::audio;
    description.mediaSubType = av_bswap32(stream->codecpar->codec_tag);
    description.audio.sampleRate = stream->codecpar->sample_rate;
    description.audio.formatID = description.mediaSubType;
    description.audio.channelsPerFrame = static_cast<std::uint32_t>(stream->codecpar->ch_layout.nb_channels);
    return std::make_shared<const CMFormatDescription>(std::move(description));
}

AVAssetTrack::Facts factsOf(const InputFile& file, int index, StreamTiming timing) {
    AVStream* stream = file.stream(index);
    const double frameRate = framesPerSecond(stream, timing);
    mendTiming(timing, stream);

    AVAssetTrack::Facts facts;
    facts.streamIndex = index;
    facts.trackID = index + 1;
    facts.timeRange = CMTimeRangeFromTimeToTime(timing.start, timing.end);
    facts.naturalTimeScale = stream->time_base.den;
    facts.sampleCount = timing.sampleCount;
    const double seconds = CMTimeGetSeconds(facts.timeRange.duration);
    if (seconds > 0)
        facts.estimatedDataRate = static_cast<float>(static_cast<double>(timing.byteCount) * 8 / seconds);

    if (stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
        facts.mediaType = AVMediaTypeAudio;
        facts.formatDescriptions = {describeAudio(stream)};
        return facts;
    }
    facts.mediaType = AVMediaTypeVideo;
    facts.naturalSize = naturalSizeOf(file, stream);
    facts.preferredTransform = transformOf(stream, facts.naturalSize);
    facts.nominalFrameRate = static_cast<float>(frameRate);
    facts.formatDescriptions = {describeVideo(file, index, frameRate)};
    return facts;
}

} // namespace

std::vector<AVAssetTrack::Facts> readTrackFacts(InputFile& file, const URL& url) {
    // Reading packets may bring up further streams; those that are in no header aren't tracks of the file.
    const int count = file.streamCount();
    const std::vector<StreamTiming> timings = readStreamTimings(file);
    std::vector<AVAssetTrack::Facts> tracks;
    for (int i = 0; i < count; ++i) {
        const bool isEmpty = timings[static_cast<std::size_t>(i)].sampleCount == 0;
        if (isEmpty || !isPresented(file.stream(i)) || !canDecode(file.stream(i)))
            continue;
        tracks.push_back(factsOf(file, i, timings[static_cast<std::size_t>(i)]));
        tracks.back().url = url;
    }
    return tracks;
}

} // namespace anadrome::libav

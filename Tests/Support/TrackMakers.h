#pragma once

#include "Tests/Support/EncodedTrack.h"
#include "Tests/Support/NumberedPicture.h"
#include "Tests/Support/ToneTrack.h"

#include <optional>

namespace anadrome::testing_support {

/// One track of a clip in the making: pieces are asked for in the order of their times.
class TrackMaker {
public:
    virtual ~TrackMaker() = default;
    /// The time of the next piece; nothing at the end of the track.
    virtual std::optional<double> nextSeconds() const = 0;
    virtual void makeNext() = 0;
    virtual void finish() = 0;
};

class VideoMaker : public TrackMaker {
public:
    VideoMaker(AVFormatContext& file, const ClipOptions& options);

    std::optional<double> nextSeconds() const override;
    void makeNext() override;
    void finish() override { track_.encode(nullptr); }

private:
    const ClipOptions& options_;
    EncodedTrack track_;
    FramePtr drawn_;
    NumberedPicture picture_;
    int number_ = 0;
    std::int64_t position_ = 0;
};

class SoundMaker : public TrackMaker {
public:
    SoundMaker(AVFormatContext& file, const ClipOptions& options, double seconds, int index);

    std::optional<double> nextSeconds() const override;
    void makeNext() override;
    void finish() override { track_.encode(nullptr); }

private:
    EncodedTrack track_;
    double startSeconds_;
    ToneTrack tones_;
    ResamplerPtr converter_;
    std::int64_t position_ = 0;
    std::int64_t length_;
};

} // namespace anadrome::testing_support

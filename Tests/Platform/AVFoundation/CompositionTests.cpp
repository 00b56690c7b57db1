#include "Platform/AVFoundation/AVMutableComposition.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"

#include <sstream>

namespace anadrome {

using namespace testing_support;

namespace {

CMTime at(double seconds) {
    return CMTimeMakeWithSeconds(seconds, 600);
}

CMTimeRange between(double start, double end) {
    return CMTimeRangeFromTimeToTime(at(start), at(end));
}

void tell(std::ostream& out, const CMTimeRange& range) {
    out << CMTimeGetSeconds(range.start) << "-" << CMTimeGetSeconds(CMTimeRangeGetEnd(range));
}

/// Each segment as "source at target" in seconds, "empty" for a source that isn't there.
std::string segmentsOf(const AVAssetTrack& track) {
    std::ostringstream out;
    for (const AVAssetTrackSegment& segment : track.segments()) {
        out << (out.tellp() > 0 ? ", " : "");
        if (segment.isEmpty())
            out << "empty";
        else
            tell(out, segment.timeMapping.source);
        out << " at ";
        tell(out, segment.timeMapping.target);
    }
    return out.str();
}

class CompositionTest : public MediaTest {
protected:
    CompositionTest() {
        const auto both = makeAsset("clip.mov", {.frames = 30, .audioCodec = "pcm_s16le"});
        m_video = both->tracksWithMediaType(AVMediaTypeVideo).at(0);
        m_audio = both->tracksWithMediaType(AVMediaTypeAudio).at(0);
    }

    std::shared_ptr<AVMutableCompositionTrack> newTrack() {
        return m_composition.addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    }

    AVMutableComposition m_composition;
    AVAssetTrackRef m_video;
    AVAssetTrackRef m_audio;
};

} // namespace

TEST_F(CompositionTest, WhatIsInsertedPushesTheRestBack) {
    const struct {
        CMTimeRange range;
        CMTime time;
        const char* segments;
    } rows[] = {
        {between(0, 0.5), kCMTimeInvalid, "0-1 at 0-1, 0-0.5 at 1-1.5"},
        {between(0, 0.5), at(1), "0-1 at 0-1, 0-0.5 at 1-1.5"},
        {between(0.25, 0.5), kCMTimeZero, "0.25-0.5 at 0-0.25, 0-1 at 0.25-1.25"},
        {between(0.5, 0.75), at(0.5), "0-0.5 at 0-0.5, 0.5-0.75 at 0.5-0.75, 0.5-1 at 0.75-1.25"},
        {between(0, 1), at(2), "0-1 at 0-1, empty at 1-2, 0-1 at 2-3"},
        {between(0.5, 2), at(1), "0-1 at 0-1, 0.5-2 at 1-2.5"},
    };
    for (const auto& row : rows) {
        const auto track = newTrack();
        ASSERT_FALSE(track->insertTimeRange(between(0, 1), m_video, kCMTimeZero));
        ASSERT_FALSE(track->insertTimeRange(row.range, m_video, row.time));
        EXPECT_EQ(segmentsOf(*track), row.segments);
    }
    EXPECT_EQ(CMTimeGetSeconds(m_composition.duration()), 3) << "the track that ends last";
}

TEST_F(CompositionTest, WhatCannotBeInsertedChangesNothing) {
    const struct {
        const char* what;
        CMTimeRange range;
        AVAssetTrackRef source;
        CMTime time;
    } rows[] = {
        {"another medium", between(0, 1), m_audio, kCMTimeZero},
        {"no track", between(0, 1), nullptr, kCMTimeZero},
        {"a negative range", between(0.5, 0.25), m_video, kCMTimeZero},
        {"an endless range", {kCMTimeZero, kCMTimePositiveInfinity}, m_video, kCMTimeZero},
        {"behind the source", between(1, 2), m_video, kCMTimeZero},
        {"at no time", between(0, 1), m_video, kCMTimeIndefinite},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto track = newTrack();
        ASSERT_FALSE(track->insertTimeRange(between(0, 0.5), m_video, kCMTimeZero));
        const std::optional<NSError> error = track->insertTimeRange(row.range, row.source, row.time);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->code(), -11800);
        EXPECT_EQ(segmentsOf(*track), "0-0.5 at 0-0.5");
    }
}

TEST_F(CompositionTest, ScalingMovesWhatComesAfter) {
    const struct {
        const char* what;
        CMTimeRange range;
        CMTime duration;
        const char* segments;
    } rows[] = {
        {"faster", between(1, 2), at(0.5), "0-1 at 0-1, 0-1 at 1-1.5, 0-1 at 1.5-2.5"},
        {"slower", between(0, 1), at(4), "0-1 at 0-4, 0-1 at 4-5, 0-1 at 5-6"},
        {"parts of two", between(0.5, 1.5), at(2),
         "0-0.5 at 0-0.5, 0.5-1 at 0.5-1.5, 0-0.5 at 1.5-2.5, 0.5-1 at 2.5-3, 0-1 at 3-4"},
        {"beyond the end", between(2.5, 4), at(0.75),
         "0-1 at 0-1, 0-1 at 1-2, 0-0.5 at 2-2.5, 0.5-1 at 2.5-2.75"},
        {"to nothing", between(1, 2), kCMTimeZero, "0-1 at 0-1, 0-1 at 1-1, 0-1 at 1-2"},
        {"to less than nothing", between(1, 2), at(-1), "0-1 at 0-1, 0-1 at 1-2, 0-1 at 2-3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto track = newTrack();
        for (int i = 0; i < 3; ++i)
            ASSERT_FALSE(track->insertTimeRange(between(0, 1), m_video, kCMTimeInvalid));
        track->scaleTimeRange(row.range, row.duration);
        EXPECT_EQ(segmentsOf(*track), row.segments);
    }
}

} // namespace anadrome

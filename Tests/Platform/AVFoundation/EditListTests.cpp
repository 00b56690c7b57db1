#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/AVFoundation/AVAssetReader.h"
#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/Playback/PictureDecoder.h"
#include "Platform/AVFoundation/Playback/PictureSource.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"
#include "Tests/Platform/AVFoundation/PixelNumbers.h"
#include "Tests/Support/MovieBoxes.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>
#include <future>

namespace anadrome {

using namespace testing_support;

namespace {

/// A picture of a clip of 30 pictures a second, and when it is shown.
struct Shown {
    int number;
    double seconds;

    friend bool operator==(const Shown& a, const Shown& b) {
        return a.number == b.number && std::abs(a.seconds - b.seconds) < 0.0005;
    }
    friend void PrintTo(const Shown& shown, std::ostream* out) {
        *out << shown.number << " at " << shown.seconds;
    }
};

using Pictures = std::vector<Shown>;

/// So many pictures from one on, at so many a second.
Pictures run(int first, int count, double start, double rate = 30) {
    Pictures pictures;
    for (int i = 0; i < count; ++i)
        pictures.push_back({first + i, start + i / rate});
    return pictures;
}

Pictures joined(Pictures a, const Pictures& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

double frames(double count) {
    return count / 30;
}

const ClipOptions h264{.frames = 90, .gop = 30, .bFrames = 2};
const ClipOptions hevc{.frames = 90, .videoCodec = "libx265", .gop = 30, .bFrames = 2};
const ClipOptions openHevc{.frames = 90, .videoCodec = "libx265", .gop = 30, .bFrames = 3, .openGop = true};

ClipOptions with(ClipOptions options, void (*change)(ClipOptions&)) {
    change(options);
    return options;
}
void negative(ClipOptions& options) {
    options.negativeOffsets = true;
}
void fragments(ClipOptions& options) {
    options.fragmented = true;
}

struct Row {
    const char* name;
    ClipOptions options;
    std::vector<MovieEdit> edits;
    Pictures expected;
    double end;
};

const MovieEdit nothing{.seconds = 0.5};
const MovieEdit middle{.seconds = 1, .mediaSeconds = frames(40)};
const MovieEdit early{.seconds = 1, .mediaSeconds = frames(10)};
const MovieEdit twice{.seconds = 1, .mediaSeconds = frames(10), .rate = 2};
const MovieEdit half{.seconds = 1, .mediaSeconds = frames(10), .rate = 0.5};
const MovieEdit held{.seconds = 1, .mediaSeconds = frames(10), .rate = 0};
const MovieEdit rest{.seconds = 0, .mediaSeconds = frames(40)};

const Row rows[] = {
    {"between.mp4", h264, {middle}, run(40, 30, 0), 1},
    {"between-hevc.mov", hevc, {middle}, run(40, 30, 0), 1},
    {"between-open.mov", openHevc, {middle}, run(40, 30, 0), 1},
    {"negative.mov", with(h264, negative), {middle}, run(40, 30, 0), 1},
    {"negative-hevc.mp4", with(hevc, negative), {middle}, run(40, 30, 0), 1},
    {"empty.mp4", hevc, {nothing, middle}, run(40, 30, 0.5), 1.5},
    {"fragments.mp4", with(h264, fragments), {rest}, run(40, 50, 0), frames(50)},
    {"fragments-hevc.mp4", with(hevc, fragments), {rest}, run(40, 50, 0), frames(50)},
    {"fragments-empty.mp4", with(openHevc, fragments), {nothing, rest}, run(40, 50, 0.5), 0.5 + frames(50)},
    {"several.mp4", h264, {early, middle}, joined(run(10, 30, 0), run(40, 30, 1)), 2},
    {"several-hevc.mp4", hevc, {early, middle}, joined(run(10, 30, 0), run(40, 30, 1)), 2},
    {"back-open.mov", openHevc, {middle, early}, joined(run(40, 30, 0), run(10, 30, 1)), 2},
    {"again.mp4",
     h264,
     {middle, middle, middle},
     joined(run(40, 30, 0), joined(run(40, 30, 1), run(40, 30, 2))),
     3},
    {"gap.mp4", hevc, {middle, nothing, early}, joined(run(40, 30, 0), run(10, 30, 1.5)), 2.5},
    {"twice.mov", h264, {twice}, run(10, 60, 0, 60), 1},
    {"half.mp4", hevc, {half, middle}, joined(run(10, 15, 0, 15), run(40, 30, 1)), 2},
    {"held.mov", h264, {held, middle}, joined(run(10, 1, 0), run(40, 30, 1)), 2},
    {"rest.mp4", h264, {rest}, run(40, 50, 0), frames(50)},
};

class EditListTest : public MediaTest {
protected:
    std::shared_ptr<AVAsset> editedAsset(const Row& row) const {
        const std::string made = clip(row.name, row.options);
        setEdits(made, row.edits);
        return AVAsset::assetWithURL(URL::fileURLWithPath(made));
    }

    static Pictures read(const std::shared_ptr<AVAsset>& asset) {
        const auto reader = *AVAssetReader::make(asset);
        const auto output = std::make_shared<AVAssetReaderTrackOutput>(
            asset->tracksWithMediaType(AVMediaTypeVideo).at(0),
            Dictionary{{kCVPixelBufferPixelFormatTypeKey, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange}});
        reader->addOutput(output);
        reader->startReading();
        Pictures pictures;
        while (const CMSampleBufferRef sample = output->copyNextSampleBuffer())
            pictures.push_back({numberIn(CMSampleBufferGetImageBuffer(sample)).value_or(-1),
                                CMTimeGetSeconds(CMSampleBufferGetPresentationTimeStamp(sample))});
        EXPECT_EQ(reader->status(), AVAssetReaderStatus::completed);
        return pictures;
    }

    static Pictures play(const AVAssetTrackRef& track, const CMTime& from, playback::Direction direction) {
        const auto decoder = std::move(*playback::PictureDecoder::open(track));
        const auto source = playback::makePictureSource(*decoder, from, direction, 1 << 22);
        Pictures pictures;
        while (true) {
            if (const auto picture = source->take(kCMTimeZero))
                pictures.push_back({numberIn(picture->pixels).value_or(-1), CMTimeGetSeconds(picture->time)});
            else if (!source->work(kCMTimeZero))
                return pictures;
        }
    }

    Pictures exported(const std::shared_ptr<AVAsset>& asset, const std::string& name) const {
        const auto session = AVAssetExportSession::exportSessionWithAsset(asset, AVAssetExportPreset640x480);
        session->setOutputURL(URL::fileURLWithPath(path(name)));
        session->setOutputFileType(AVFileTypeQuickTimeMovie);
        std::promise<void> ended;
        session->exportAsynchronouslyWithCompletionHandler([&] { ended.set_value(); });
        ended.get_future().wait();
        EXPECT_EQ(session->status(), AVAssetExportSessionStatus::completed);
        const MovieFacts movie = readMovie(path(name));
        Pictures pictures;
        for (const FrameFacts& frame : movie.video.at(0).frames)
            pictures.push_back({frame.number.value_or(-1), frame.seconds});
        return pictures;
    }
};

} // namespace

TEST_F(EditListTest, WhatTheEditsLeaveOutIsNeitherShownNorCounted) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto asset = editedAsset(row);
        const AVAssetTrackRef track = asset->tracksWithMediaType(AVMediaTypeVideo).at(0);
        const auto count = static_cast<double>(row.expected.size());
        EXPECT_EQ(track->sampleCount(), static_cast<std::int64_t>(row.expected.size()));
        EXPECT_NEAR(CMTimeGetSeconds(track->timeRange().start), row.expected.front().seconds, 0.001);
        EXPECT_NEAR(CMTimeGetSeconds(asset->duration()), row.end, 0.001);
        EXPECT_NEAR(track->nominalFrameRate(), count / (row.end - row.expected.front().seconds), 0.05);
        EXPECT_EQ(read(asset), row.expected);
    }
}

TEST_F(EditListTest, ThePlayerShowsTheSamePicturesEitherWayFromAnyPlace) {
    using playback::Direction;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto asset = editedAsset(row);
        const AVAssetTrackRef track = asset->tracksWithMediaType(AVMediaTypeVideo).at(0);
        const Pictures& all = row.expected;
        EXPECT_EQ(play(track, kCMTimeZero, Direction::forwards), all);
        EXPECT_EQ(play(track, asset->duration(), Direction::backwards), Pictures(all.rbegin(), all.rend()));
        for (const std::size_t at : {std::size_t{3}, all.size() / 2 + 1, all.size() - 2}) {
            SCOPED_TRACE(at);
            const auto here = all.begin() + static_cast<std::ptrdiff_t>(at);
            const CMTime time = CMTimeMakeWithSeconds(here->seconds, 90000);
            EXPECT_EQ(play(track, time, Direction::forwards), Pictures(here, all.end()));
            EXPECT_EQ(play(track, time, Direction::backwards),
                      Pictures(std::make_reverse_iterator(here + 1), all.rend()));
        }
    }
}

TEST_F(EditListTest, ExportsHoldTheSamePictures) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(exported(editedAsset(row), std::string("export-") + row.name + ".mov"), row.expected);
    }
}

TEST_F(EditListTest, SoundBeforeTheEditIsNotHeard) {
    // The container's own way to begin at zero: all that comes before is media without an edit.
    for (const bool fragmented : {false, true})
        for (const char* codec : {"pcm_s16le", "aac"}) {
            SCOPED_TRACE(std::string(codec) + (fragmented ? " in fragments" : ""));
            const auto asset = makeAsset("sound.mov", {.frames = 90,
                                                       .startSeconds = -0.5,
                                                       .audioCodec = codec,
                                                       .audioRate = 44100,
                                                       .fragmented = fragmented});
            const AVAssetTrackRef track = asset->tracksWithMediaType(AVMediaTypeAudio).at(0);
            EXPECT_NEAR(CMTimeGetSeconds(track->timeRange().start), 0, 0.001);
            EXPECT_NEAR(CMTimeGetSeconds(track->timeRange().duration), 2.5, 0.03);
            const auto reader = *AVAssetReader::make(asset);
            const auto output = std::make_shared<AVAssetReaderTrackOutput>(
                track, Dictionary{{AVFormatIDKey, kAudioFormatLinearPCM}});
            reader->addOutput(output);
            reader->startReading();
            Sound sound{.sampleRate = 44100, .channelCount = 2};
            std::vector<double> times;
            while (const CMSampleBufferRef sample = output->copyNextSampleBuffer()) {
                times.push_back(CMTimeGetSeconds(CMSampleBufferGetPresentationTimeStamp(sample)));
                const auto& bytes = CMSampleBufferGetDataBuffer(sample)->bytes();
                const auto* words = reinterpret_cast<const std::int16_t*>(bytes.data());
                for (std::size_t i = 0; i < bytes.size() / 2; ++i)
                    sound.samples.push_back(static_cast<float>(words[i]) / 32768);
            }
            EXPECT_NEAR(times.at(0), 0, 0.0005);
            EXPECT_NEAR(sound.seconds(), 2.5, 0.03);
            EXPECT_NEAR(toneIn(sound, 0, 0.05, 0.4).value_or(0), toneFrequency(0, 0, 2), 4);
            EXPECT_NEAR(toneIn(sound, 0, 0.55, 0.9).value_or(0), toneFrequency(1, 0, 2), 4);
        }
}

} // namespace anadrome

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/Playback/PictureDecoder.h"
#include "Platform/AVFoundation/Playback/PictureSource.h"
#include "Tests/Platform/AVFoundation/PixelNumbers.h"
#include "Tests/Support/ClipTest.h"

#include <algorithm>
#include <filesystem>
#include <numeric>

namespace anadrome::playback {

using namespace testing_support;

namespace {

/// A picture source over a made clip.
struct OpenSource {
    OpenSource(const std::string& path, const CMTime& position, Direction direction, std::size_t mostBytes)
        : asset(AVAsset::assetWithURL(URL::fileURLWithPath(path))),
          decoder(std::move(*PictureDecoder::open(asset->tracksWithMediaType(AVMediaTypeVideo).at(0)))),
          source(makePictureSource(*decoder, position, direction, mostBytes)) {}

    std::optional<TimedPicture> next(const CMTime& distance = kCMTimeZero) {
        while (true) {
            if (auto picture = source->take(distance))
                return picture;
            if (!source->work(distance))
                return std::nullopt;
            mostBytes = std::max(mostBytes, source->cachedBytes());
        }
    }

    /// The numbers of all pictures to the end, checking that each is due after the one before.
    std::vector<int> rest() {
        std::vector<int> numbers;
        CMTime due = kCMTimeNegativeInfinity;
        while (const auto picture = next()) {
            EXPECT_LT(CMTimeCompare(due, picture->due), 0) << numbers.size();
            due = picture->due;
            numbers.push_back(numberIn(picture->pixels).value_or(-1));
        }
        EXPECT_TRUE(source->isAtEnd());
        return numbers;
    }

    std::shared_ptr<AVAsset> asset;
    std::unique_ptr<PictureDecoder> decoder;
    std::unique_ptr<PictureSource> source;
    std::size_t mostBytes = 0;
};

std::vector<int> upFrom(int first, int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count - first));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

std::vector<int> downFrom(int first) {
    const std::vector<int> numbers = upFrom(0, first + 1);
    return {numbers.rbegin(), numbers.rend()};
}

using PictureSourceTest = ClipTest;

} // namespace

TEST_F(PictureSourceTest, HandsOutEveryPictureOnceEitherWayFromAnyPlaceInBoundedMemory) {
    const std::size_t pictureBytes = 128 * 96 * 3 / 2;
    const std::pair<const char*, ClipOptions> rows[] = {
        {"short.mp4", {.frames = 70, .gop = 12}},
        {"long.mp4", {.frames = 300, .gop = 250}},
        {"long-b.mp4", {.frames = 120, .gop = 250, .bFrames = 3}},
        {"open.mp4", {.frames = 70, .gop = 12, .bFrames = 2, .openGop = true}},
        {"open-hevc.mp4", {.frames = 60, .videoCodec = "libx265", .gop = 15, .bFrames = 3, .openGop = true}},
        {"open-tail.mp4", {.frames = 150, .gop = 12, .bFrames = 3, .openGop = true}},
        {"open.ts", {.frames = 70, .gop = 12, .bFrames = 2, .openGop = true}},
        {"open.mkv", {.frames = 70, .gop = 12, .bFrames = 2, .openGop = true}},
        {"fragments.mp4", {.frames = 70, .gop = 12, .bFrames = 2, .fragmented = true}},
        {"mpeg2.mpg",
         {.frames = 70, .frameRate = {25, 1}, .videoCodec = "mpeg2video", .gop = 12, .bFrames = 2}},
        {"uneven.mov", {.frames = 60, .frameTicks = {20, 600, 10, 25}, .gop = 20, .bFrames = 2}},
        {"late.mov", {.frames = 40, .startSeconds = 3, .gop = 12, .bFrames = 2}},
        {"ten.mov", {.frames = 40, .videoCodec = "libx265", .pixelFormat = "yuv420p10le", .gop = 12}},
    };
    for (const auto& [name, options] : rows) {
        SCOPED_TRACE(name);
        const std::string path = clip(name, options);
        const std::size_t depthBytes = options.pixelFormat == "yuv420p" ? 1 : 2;
        const std::size_t mostBytes = 40 * pictureBytes * depthBytes;

        OpenSource all(path, kCMTimeZero, Direction::forwards, mostBytes);
        std::vector<CMTime> times;
        while (const auto picture = all.next()) {
            ASSERT_EQ(numberIn(picture->pixels), static_cast<int>(times.size()));
            times.push_back(picture->time);
        }
        ASSERT_EQ(times.size(), static_cast<std::size_t>(options.frames));

        for (const int first : {0, 1, 11, 12, 13, 37, options.frames - 1}) {
            SCOPED_TRACE(first);
            const CMTime position = times[static_cast<std::size_t>(first)];
            OpenSource forwards(path, position, Direction::forwards, mostBytes);
            EXPECT_EQ(forwards.rest(), upFrom(first, options.frames));
            OpenSource backwards(path, position, Direction::backwards, mostBytes);
            EXPECT_EQ(backwards.rest(), downFrom(first));
            EXPECT_LE(backwards.mostBytes, mostBytes);
        }
        OpenSource fromEnd(path, all.asset->duration(), Direction::backwards, mostBytes);
        EXPECT_EQ(fromEnd.rest(), downFrom(options.frames - 1));
    }
}

TEST_F(PictureSourceTest, MovesEvenlyWhereDecodingCannotKeepUp) {
    const std::string path = clip("slow.mp4", {.width = 128, .height = 96, .frames = 700, .gop = 250});
    OpenSource open(path, CMTimeMake(700, 30), Direction::backwards, 40 * 128 * 96 * 3 / 2);
    std::vector<int> numbers;
    std::optional<TimedPicture> picture;
    for (int decoded = 0; !open.source->isAtEnd() || picture; ++decoded) {
        const CMTime distance = CMTimeMake(decoded, 60); // sixty pictures are decoded in a second
        if (!picture)
            picture = open.source->take(distance);
        if (picture && CMTimeCompare(picture->due, distance) <= 0)
            numbers.push_back(numberIn(std::exchange(picture, std::nullopt)->pixels).value_or(-1));
        open.source->work(distance);
    }
    ASSERT_GT(numbers.size(), 60U);
    int jumps = 0;
    for (std::size_t i = 2; i < numbers.size(); ++i)
        jumps += numbers[i - 1] - numbers[i] > 20 ? 1 : 0;
    EXPECT_LE(jumps, 2); // where a group begins, the whole one before it has to be decoded
}

TEST_F(PictureSourceTest, APictureThatLastsLongIsShownThoughDecodingCannotKeepUp) {
    // In each group of ten, the last picture lasts two seconds.
    std::vector<int> ticks(9, 20);
    ticks.push_back(1200);
    const std::string path = clip("still.mov", {.frames = 40, .frameTicks = ticks, .gop = 10});
    OpenSource open(path, CMTimeMake(4 * 1380, 600), Direction::backwards, 1);
    std::vector<int> numbers;
    // Half of a group's time goes by while the group is decoded.
    for (int decoded = 0; !open.source->isAtEnd(); ++decoded) {
        const CMTime distance = CMTimeMake(decoded * 1380 / 2 / 11, 600);
        open.source->work(distance);
        while (const auto picture = open.source->take(distance))
            numbers.push_back(numberIn(picture->pixels).value_or(-1));
        ASSERT_LT(decoded, 1000);
    }
    for (const int still : {39, 29, 19, 9})
        EXPECT_TRUE(std::ranges::find(numbers, still) != numbers.end()) << still;
}

TEST_F(PictureSourceTest, AFileThatBreaksOffPlaysBackwardsFromWhatThereIs) {
    const std::string path = clip("broken.ts", {.frames = 120, .gop = 30});
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    OpenSource forwards(path, kCMTimeZero, Direction::forwards, 1 << 20);
    std::vector<int> numbers = forwards.rest();
    ASSERT_GT(numbers.size(), 30U);
    OpenSource backwards(path, CMTimeMake(4, 1), Direction::backwards, 1 << 20);
    std::vector<int> back = backwards.rest();
    std::reverse(back.begin(), back.end());
    // The last picture is torn, and may look either way.
    back.back() = numbers.back();
    EXPECT_EQ(back, numbers);
}

} // namespace anadrome::playback

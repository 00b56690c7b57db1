#include "Tests/Support/ReversedPsnr.h"
#include "Tests/Support/MovieFile.h"
#include "Tests/Support/PictureReading.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace anadrome::testing_support {

namespace {

constexpr double kSamePictures = 100;

struct StoredLuma {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

/// Decodes stretches of a movie's first video track by their place in presentation order.
class StretchReader {
public:
    explicit StretchReader(const std::string& path)
        : file_(openMovie(path)),
          index_(checked(av_find_best_stream(file_.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0),
                         path + " has no pictures")),
          decoder_(*file_->streams[index_]) {
        const PacketPtr packet = makePacket();
        while (av_read_frame(file_.get(), packet.get()) >= 0) {
            if (packet->stream_index == index_ && !(packet->flags & AV_PKT_FLAG_DISCARD))
                times_.push_back(packet->pts);
            av_packet_unref(packet.get());
        }
        std::sort(times_.begin(), times_.end());
    }

    std::int64_t frameCount() const { return static_cast<std::int64_t>(times_.size()); }
    std::int64_t pictureBytes() const {
        const AVCodecParameters& coding = *file_->streams[index_]->codecpar;
        return static_cast<std::int64_t>(coding.width) * coding.height;
    }

    std::vector<StoredLuma> read(std::int64_t first, std::int64_t last) {
        seekBefore(times_[static_cast<std::size_t>(first)]);
        const std::int64_t firstTime = times_[static_cast<std::size_t>(first)];
        const std::int64_t lastTime = times_[static_cast<std::size_t>(last - 1)];
        std::vector<StoredLuma> stretch;
        bool past = false;
        const auto take = [&](const AVFrame& frame) {
            past |= frame.pts > lastTime;
            if (frame.pts >= firstTime && frame.pts <= lastTime)
                stretch.push_back(stored(frame));
        };
        const PacketPtr packet = makePacket();
        while (!past && av_read_frame(file_.get(), packet.get()) >= 0) {
            if (packet->stream_index == index_)
                decoder_.decode(packet.get(), take);
            av_packet_unref(packet.get());
        }
        if (!past)
            decoder_.decode(nullptr, take);
        return stretch;
    }

private:
    /// Well before, so that no wanted frame leans on one that was skipped.
    void seekBefore(std::int64_t time) {
        const std::int64_t second = std::llround(1 / av_q2d(file_->streams[index_]->time_base));
        decoder_.reset();
        checked(
            av_seek_frame(file_.get(), index_, std::max(times_.front(), time - second), AVSEEK_FLAG_BACKWARD),
            "cannot go back in a movie");
    }

    static StoredLuma stored(const AVFrame& frame) {
        const FrameLuma luma(frame);
        const LumaView& view = luma.view();
        StoredLuma copy{view.width, view.height, {}};
        for (int y = 0; y < view.height; ++y) {
            const std::uint8_t* row = view.data + y * view.stride;
            copy.pixels.insert(copy.pixels.end(), row, row + view.width);
        }
        return copy;
    }

    InputFilePtr file_;
    int index_;
    TrackDecoder decoder_;
    std::vector<std::int64_t> times_; ///< of the frames, sorted
};

double squaredError(const StoredLuma& one, const StoredLuma& other) {
    std::int64_t sum = 0;
    for (std::size_t index = 0; index < one.pixels.size(); ++index) {
        const int difference = one.pixels[index] - other.pixels[index];
        sum += std::int64_t{difference} * difference;
    }
    return static_cast<double>(sum);
}

} // namespace

std::optional<double> reversedPsnr(const std::string& source, const std::string& output,
                                   std::int64_t heldBytes) {
    StretchReader forwards(source);
    StretchReader backwards(output);
    const std::int64_t count = forwards.frameCount();
    if (count == 0 || count != backwards.frameCount())
        return std::nullopt;

    const std::int64_t held = std::max<std::int64_t>(1, heldBytes / 2 / forwards.pictureBytes());
    double error = 0;
    double pixels = 0;
    for (std::int64_t first = 0; first < count; first += held) {
        const std::int64_t last = std::min(count, first + held);
        const auto expected = forwards.read(first, last);
        const auto actual = backwards.read(count - last, count - first);
        if (expected.size() != actual.size())
            return std::nullopt;
        for (std::size_t index = 0; index < expected.size(); ++index) {
            const StoredLuma& one = expected[index];
            const StoredLuma& other = actual[actual.size() - 1 - index];
            if (one.width != other.width || one.height != other.height)
                return std::nullopt;
            error += squaredError(one, other);
            pixels += static_cast<double>(one.pixels.size());
        }
    }
    return error > 0 ? std::min(kSamePictures, 10 * std::log10(255.0 * 255.0 * pixels / error))
                     : kSamePictures;
}

} // namespace anadrome::testing_support

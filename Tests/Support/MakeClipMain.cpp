#include "Tests/Support/ClipMaker.h"
#include "Tests/Support/ClipTiming.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace anadrome::testing_support;

/// Two whole numbers with one of the separators between them.
std::optional<AVRational> pairFrom(const std::string& text, const std::string& separators) {
    const std::size_t middle = text.find_first_of(separators);
    const auto isNumber = [](const std::string& part) {
        return !part.empty() && part.size() < 9 && part.find_first_not_of("0123456789") == std::string::npos;
    };
    if (middle == std::string::npos || !isNumber(text.substr(0, middle)) ||
        !isNumber(text.substr(middle + 1)))
        return std::nullopt;
    return AVRational{std::stoi(text.substr(0, middle)), std::stoi(text.substr(middle + 1))};
}

AVRational requirePair(const std::string& option, const std::string& text, const std::string& separators) {
    const auto pair = pairFrom(text, separators);
    if (!pair || pair->num < 1 || pair->den < 1)
        throw CLI::ValidationError(option,
                                   "'" + text + "' is not two whole numbers like 16" + separators[0] + "9");
    return *pair;
}

AVRational rateFrom(const std::string& text) {
    if (const auto rate = pairFrom(text + "/1", "/"); rate && rate->num > 0)
        return *rate;
    return requirePair("--rate", text, "/:");
}

/// The command line's texts that need more than a conversion.
struct RawOptions {
    std::string size = "1280x720";
    std::string rate = "30";
    std::string colour = "bt709";
    std::string transform = "upright";
    std::string pixelAspect = "1:1";
    std::string audio = "aac";
    double seconds = 10;
    bool rich = false;
    std::vector<std::string> metadata;
};

void addPictureOptions(CLI::App& app, ClipOptions& clip, RawOptions& raw) {
    app.add_option("--size", raw.size, "width x height")->capture_default_str();
    app.add_option("--rate", raw.rate, "frames a second, such as 25 or 30000/1001")->capture_default_str();
    app.add_option("--ticks", clip.frameTicks, "frame durations in ticks, repeated; instead of --rate")
        ->check(CLI::PositiveNumber);
    app.add_option("--time-scale", clip.timeScale, "ticks a second for --ticks")->capture_default_str();
    auto* seconds =
        app.add_option("--seconds", raw.seconds, "how long the pictures last")->capture_default_str();
    app.add_option("--frames", clip.frames, "how many pictures")->excludes(seconds);
    app.add_option("--start", clip.startSeconds, "the time of the first frame")->capture_default_str();
    app.add_option(
           "--transform", raw.transform,
           "how the picture is to be shown: 0 to 7, or upright, rotate90, rotate180, rotate270, mirror, "
           "flip, transpose, transverse")
        ->capture_default_str();
    app.add_option("--sar", raw.pixelAspect, "the shape of a pixel, such as 16:11")->capture_default_str();
    app.add_flag("--count-down", clip.countsDown, "number the pictures backwards");
    app.add_flag("--rich", raw.rich, "moving texture and grain instead of a plain background");
}

void addCodingOptions(CLI::App& app, ClipOptions& clip, RawOptions& raw) {
    app.add_option("--codec", clip.videoCodec, "the video encoder")->capture_default_str();
    app.add_option("--pixel-format", clip.pixelFormat, "such as yuv420p10le")->capture_default_str();
    app.add_option("--colour", raw.colour, "bt709, bt601, hlg, pq or untagged")->capture_default_str();
    app.add_flag("--full-range", clip.fullRange, "luma from 0 to the top");
    app.add_option("--gop", clip.gop, "frames from one key frame to the next")->capture_default_str();
    app.add_option("--bframes", clip.bFrames, "frames in a row that lean on later ones")
        ->capture_default_str();
    app.add_flag("--open-gop", clip.openGop, "let such frames lean on the next key frame");
    app.add_flag("--interlaced", clip.interlaced, "coded as fields, top field first");
    auto* quality = app.add_option("--quality", clip.quality, "crf or quantiser scale");
    app.add_option("--bitrate", clip.bitRate, "video bits a second")->excludes(quality);
    app.add_option("--preset", clip.preset, "the encoder's preset")->capture_default_str();
}

void addSoundOptions(CLI::App& app, ClipOptions& clip, RawOptions& raw) {
    app.add_option("--audio", raw.audio, "the sound encoder, or none")->capture_default_str();
    app.add_option("--audio-rate", clip.audioRate, "samples a second")->capture_default_str();
    app.add_option("--channels", clip.audioChannels, "sound channels")->capture_default_str();
    app.add_option("--audio-seconds", clip.audioSeconds,
                   "how long the sound lasts if not as long as the pictures");
    app.add_option("--audio-start", clip.audioStartSeconds, "the time of the first sound if not --start");
    app.add_flag("--second-audio", clip.secondAudioTrack, "add another sound track");
    app.add_flag("--unknown-first-sound", clip.unknownFirstSound, "the first sound track cannot be decoded");
}

void addFileOptions(CLI::App& app, ClipOptions& clip, RawOptions& raw) {
    app.add_flag("--data-track", clip.dataTrack, "add a track of timed data");
    app.add_flag("--fragmented", clip.fragmented, "write the movie in fragments");
    app.add_option("--meta", raw.metadata, "key=value, more than once");
    app.add_flag("--keyed-meta", clip.keyedMetadata, "write metadata under full keys");
}

void resolve(ClipOptions& clip, const RawOptions& raw, bool framesGiven) {
    const AVRational size = requirePair("--size", raw.size, "x");
    clip.width = size.num;
    clip.height = size.den;
    clip.frameRate = rateFrom(raw.rate);
    clip.pixelAspect = requirePair("--sar", raw.pixelAspect, ":/");
    clip.detail = raw.rich ? Detail::Rich : Detail::Flat;
    clip.audioCodec = raw.audio == "none" ? "" : raw.audio;

    const auto colour = colourPresetNamed(raw.colour);
    if (!colour)
        throw CLI::ValidationError("--colour",
                                   "'" + raw.colour + "' is none of bt709, bt601, hlg, pq, untagged");
    clip.colour = *colour;
    const auto orientation = orientationNamed(raw.transform);
    if (!orientation)
        throw CLI::ValidationError("--transform", "'" + raw.transform + "' is not an orientation");
    clip.orientation = *orientation;

    for (const std::string& entry : raw.metadata) {
        const std::size_t equals = entry.find('=');
        if (equals == std::string::npos || equals == 0)
            throw CLI::ValidationError("--meta", "'" + entry + "' is not key=value");
        clip.metadata[entry.substr(0, equals)] = entry.substr(equals + 1);
    }
    if (!framesGiven)
        clip.frames = framesToFill(clip, raw.seconds);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Makes a clip whose pictures tell their number and whose sound tells its second."};
    std::string path;
    ClipOptions clip;
    RawOptions raw;
    app.add_option("out", path, "the file to write; its extension chooses the container")->required();
    addPictureOptions(app, clip, raw);
    addCodingOptions(app, clip, raw);
    addSoundOptions(app, clip, raw);
    addFileOptions(app, clip, raw);
    try {
        app.parse(argc, argv);
        resolve(clip, raw, app.count("--frames") > 0);
        makeClip(path, clip);
    } catch (const CLI::Error& error) {
        return app.exit(error);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "anadrome-make-clip: %s\n", error.what());
        return 1;
    }
    return 0;
}

#include "Tests/Support/ClipMaker.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <exception>

using namespace anadrome::testing_support;

/// Makes the clips that scripts and benchmarks work on.
int main(int argc, char** argv) {
    CLI::App app{"Makes a clip whose pictures tell their number and whose sound tells its second."};
    std::string path;
    std::string size = "1280x720";
    double seconds = 10;
    ClipOptions clip{.audioCodec = "aac"};
    app.add_option("out", path, "the file to write; its extension chooses the container")->required();
    app.add_option("--size", size, "width x height")->capture_default_str();
    app.add_option("--rate", clip.frameRate.num, "frames a second")->capture_default_str();
    app.add_option("--seconds", seconds, "how long the clip lasts")->capture_default_str();
    app.add_flag_callback(
        "--rich", [&] { clip.detail = Detail::Rich; }, "as hard to code as camera footage");
    app.add_option("--bitrate", clip.bitRate, "video bits a second");
    app.add_option("--gop", clip.gop, "frames in a group of pictures")->capture_default_str();
    app.add_option("--preset", clip.preset, "the encoder's preset")->capture_default_str();
    app.add_option("--audio", clip.audioCodec, "the sound encoder")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        if (std::sscanf(size.c_str(), "%dx%d", &clip.width, &clip.height) != 2)
            throw std::runtime_error("the size isn't two numbers like 1280x720");
        clip.frames = static_cast<int>(std::lround(seconds * clip.frameRate.num));
        makeClip(path, clip);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "anadrome-make-clip: %s\n", error.what());
        return 1;
    }
    return 0;
}

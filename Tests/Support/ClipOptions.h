#pragma once

#include "Tests/Support/Libav.h"
#include "Tests/Support/Orientation.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace anadrome::testing_support {

enum class ColourPreset { Bt709, Bt601, Hlg, Pq, Untagged };

enum class Detail {
    Flat, ///< a plain background: small files that are quick to make
    Rich, ///< moving texture and grain, as hard to code as camera footage
    Ramp, ///< grey that rises from no signal at the left to the full one at the right; seen from 25 to 30 %
          ///< of the height
};

/// What a made clip is like. Fields are meant to be named: makeClip(path, {.width = 64, .height = 48}).
struct ClipOptions {
    int width = 128; ///< 64 x 48 is the smallest size whose frame numbers are sure to be readable
    int height = 96;
    int frames = 30; ///< at most 65536, the number of different frame numbers
    AVRational frameRate = {30, 1};
    std::vector<int> frameTicks = {}; ///< durations in 1/600 seconds, repeated; overrides frameRate
    double startSeconds = 0; ///< the time of the first frame and, unless told otherwise, of the first sound
    Orientation orientation = Orientation::Upright; ///< kept by mov and mp4
    AVRational pixelAspect = {1, 1};
    Detail detail = Detail::Flat;
    bool countsDown = false; ///< the last number first, as in a movie that was turned round

    std::string videoCodec = "libx264";
    std::string pixelFormat = "yuv420p";
    ColourPreset colour = ColourPreset::Bt709;
    bool fullRange = false; ///< the yuvj formats are full range without it
    int gop = 30;
    int bFrames = 0;
    bool openGop = false;
    bool interlaced = false;            ///< coded and tagged as such, top field first
    std::optional<double> quality = {}; ///< crf where the codec has it, else the quantiser scale
    std::optional<std::int64_t> bitRate = {};
    std::string preset = "ultrafast";

    std::string audioCodec = {}; ///< an encoder's name; empty for a silent film
    int audioRate = 48000;
    int audioChannels = 2;
    std::optional<double> audioSeconds = {};      ///< as long as the pictures unless told otherwise
    std::optional<double> audioStartSeconds = {}; ///< with the pictures unless told otherwise
    bool secondAudioTrack = false;
    bool unknownFirstSound = false; ///< mov and mp4: the first sound track claims a codec nobody knows

    bool fragmented = false;
    bool negativeOffsets = false; ///< mov and mp4: composition offsets are signed, and the first decode time
                                  ///< is that of the first picture
    bool keyedMetadata = false;   ///< mov and mp4: any key may be written, in the keyed form
    std::map<std::string, std::string> metadata = {};
};

/// The unit in which a clip's frames are timed: a whole frame where all last the same.
AVRational timeBaseOf(const ClipOptions& options);

/// How long a frame is shown, in that unit.
std::int64_t durationOf(const ClipOptions& options, int frame);

/// How long the pictures of the clip last altogether.
double videoSeconds(const ClipOptions& options);

struct ColourTags {
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
};

ColourTags tagsOf(ColourPreset preset);

} // namespace anadrome::testing_support

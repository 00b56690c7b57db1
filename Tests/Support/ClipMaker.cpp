#include "Tests/Support/ClipMaker.h"
#include "Tests/Support/ClipTiming.h"
#include "Tests/Support/PictureLayout.h"
#include "Tests/Support/TrackMakers.h"
#include "Tests/Support/UnknownSound.h"

#include <memory>
#include <vector>

namespace anadrome::testing_support {

namespace {

using TrackMakers = std::vector<std::unique_ptr<TrackMaker>>;

void refuse(bool wrong, const char* why) {
    if (wrong)
        throw std::runtime_error(why);
}

void checkOptions(const ClipOptions& options) {
    refuse(options.width < 1 || options.height < 1, "the size must be at least one pixel");
    refuse(options.frames < 1 || options.frames > kFrameNumbers, "a clip has from 1 to 65536 frames");
    refuse(options.frameRate.num < 1 || options.frameRate.den < 1, "the frame rate must be positive");
    refuse(options.timeScale < 1, "the time scale must be positive");
    refuse(options.pixelAspect.num < 1 || options.pixelAspect.den < 1, "the pixel aspect must be positive");
    refuse(options.audioRate < 1 || options.audioChannels < 1, "sound needs a rate and channels");
    for (const int ticks : options.frameTicks)
        refuse(ticks < 1, "every frame must last at least one tick");
    refuse(options.unknownFirstSound && options.audioCodec.empty(), "there is no sound to make unknown");
}

OutputFilePtr createFile(const std::string& path) {
    AVFormatContext* made = nullptr;
    const int result = avformat_alloc_output_context2(&made, nullptr, nullptr, path.c_str());
    OutputFilePtr file(made);
    checked(result, "no container goes with the name " + path);
    checked(avio_open(&file->pb, path.c_str(), AVIO_FLAG_WRITE), "cannot create " + path);
    return file;
}

TrackMakers makeTracks(AVFormatContext& file, const ClipOptions& options) {
    TrackMakers tracks;
    tracks.push_back(std::make_unique<VideoMaker>(file, options));
    const double seconds = videoSeconds(options);
    const int soundTracks = options.audioCodec.empty() ? 0 : options.secondAudioTrack ? 2 : 1;
    for (int index = 0; index < soundTracks; ++index)
        tracks.push_back(
            std::make_unique<SoundMaker>(file, options, options.audioSeconds.value_or(seconds), index));
    if (options.dataTrack)
        tracks.push_back(std::make_unique<DataMaker>(file, options.startSeconds, seconds));
    return tracks;
}

void writeHeader(AVFormatContext& file, const ClipOptions& options) {
    for (const auto& [key, value] : options.metadata)
        av_dict_set(&file.metadata, key.c_str(), value.c_str(), 0);
    std::string flags = options.colour == ColourPreset::Untagged ? "-write_colr" : "+write_colr";
    if (options.fragmented)
        flags += "+frag_keyframe+delay_moov";
    if (options.keyedMetadata)
        flags += "+use_metadata_tags";
    OptionList extras;
    extras.set("movflags", flags);
    if (!options.frameTicks.empty())
        extras.set("video_track_timescale", std::to_string(options.timeScale));
    checked(avformat_write_header(&file, extras.address()), "this container does not take these tracks");
}

TrackMaker* earliest(const TrackMakers& tracks) {
    TrackMaker* first = nullptr;
    for (const auto& track : tracks)
        if (track->nextSeconds() && (!first || track->nextSeconds() < first->nextSeconds()))
            first = track.get();
    return first;
}

} // namespace

void makeClip(const std::string& path, const ClipOptions& options) {
    av_log_set_level(AV_LOG_ERROR);
    checkOptions(options);
    OutputFilePtr file = createFile(path);
    const TrackMakers tracks = makeTracks(*file, options);
    writeHeader(*file, options);
    while (TrackMaker* track = earliest(tracks)) {
        track->makeNext();
        if (!track->nextSeconds())
            track->finish();
    }
    checked(av_write_trailer(file.get()), "cannot finish " + path);
    checked(avio_closep(&file->pb), "cannot finish " + path);
    if (options.unknownFirstSound)
        makeFirstSoundUnknown(path);
}

} // namespace anadrome::testing_support

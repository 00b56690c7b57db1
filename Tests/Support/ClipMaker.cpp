#include "Tests/Support/ClipMaker.h"
#include "Tests/Support/MovieBoxes.h"
#include "Tests/Support/PictureLayout.h"
#include "Tests/Support/TrackMakers.h"

#include <memory>
#include <vector>

namespace anadrome::testing_support {

namespace {

using TrackMakers = std::vector<std::unique_ptr<TrackMaker>>;

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
    const int soundTracks = options.audioCodec.empty() ? 0 : options.secondAudioTrack ? 2 : 1;
    for (int index = 0; index < soundTracks; ++index)
        tracks.push_back(std::make_unique<SoundMaker>(file, options, videoSeconds(options), index));
    return tracks;
}

void writeHeader(AVFormatContext& file, const ClipOptions& options) {
    for (const auto& [key, value] : options.metadata)
        av_dict_set(&file.metadata, key.c_str(), value.c_str(), 0);
    std::string flags = options.colour == ColourPreset::Untagged ? "-write_colr" : "+write_colr";
    if (options.fragmented)
        flags += "+frag_keyframe+delay_moov+default_base_moof";
    if (options.negativeOffsets)
        flags += "+negative_cts_offsets";
    if (options.keyedMetadata)
        flags += "+use_metadata_tags";
    OptionList extras;
    extras.set("movflags", flags);
    if (!options.frameTicks.empty())
        extras.set("video_track_timescale", std::to_string(timeBaseOf(options).den));
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
    if (options.frames < 1 || options.frames > kFrameNumbers)
        throw std::runtime_error("a clip has from 1 to 65536 frames");
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

#include "Platform/AVFoundation/Libav/InputFile.h"

#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/Log.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace anadrome::libav {

namespace {

// Formats that name other files or streams (playlists, concatenation scripts) and those that take any text
// for pictures are left out on purpose.
constexpr const char* formats = "mov,mp4,matroska,webm,avi,mpegts,mpeg,flv,asf,ogg,mxf,gif,dv,nut";

ColorTags tagsOf(const AVCodecParameters* parameters) {
    return {parameters->color_primaries, parameters->color_trc, parameters->color_space};
}

std::optional<NSError> rejectAllButPlainFiles(const URL& url) {
    struct stat status {};
    if (::stat(url.path().c_str(), &status) != 0)
        return makeAVError(AVErrorInvalidSourceMedia, NSError::posix(errno));
    if (S_ISDIR(status.st_mode))
        return makeAVError(AVErrorInvalidSourceMedia, NSError::posix(EISDIR));
    if (!S_ISREG(status.st_mode))
        return makeAVError(AVErrorInvalidSourceMedia, NSError::posix(ENOTSUP));
    return std::nullopt;
}

Result<Owned<AVFormatContext>> openContext(const URL& url, bool appliesEdits) {
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set(&options, "format_whitelist", formats, 0);
    if (!appliesEdits)
        av_dict_set(&options, "ignore_editlist", "1", 0);
    AVFormatContext* context = nullptr;
    const std::string name = "file:" + url.path();
    const int opened = avformat_open_input(&context, name.c_str(), nullptr, &options);
    av_dict_free(&options);
    if (opened < 0)
        return errorFrom(opened, AVErrorFileFormatNotRecognized);
    return Owned<AVFormatContext>(context);
}

bool isMovie(const AVFormatContext& context) {
    return std::strstr(context.iformat->name, "mov") != nullptr;
}

} // namespace

Result<InputFile> InputFile::open(const URL& url) {
    routeLibraryLog();
    if (std::optional<NSError> error = rejectAllButPlainFiles(url))
        return *error;
    Result<Owned<AVFormatContext>> opened = openContext(url, true);
    if (!opened)
        return opened.error();
    InputFile file;
    if (isMovie(**opened)) {
        file.m_timeline = readMovieTimeline((*opened)->pb);
        file.m_hasAppliedEdits = file.m_timeline.isKnownToDemuxer();
        if (!file.m_hasAppliedEdits)
            opened = openContext(url, false);
        if (!opened)
            return opened.error();
    }
    AVFormatContext* context = opened->get();
    file.m_context = std::move(*opened);
    for (int i = 0; i < file.streamCount(); ++i)
        file.m_containerTags.push_back(tagsOf(file.stream(i)->codecpar));
    const int probed = avformat_find_stream_info(context, nullptr);
    if (probed < 0)
        return errorFrom(probed, AVErrorFileFailedToParse);
    return file;
}

ColorTags InputFile::colorTags(int index) const {
    const auto i = static_cast<std::size_t>(index);
    const ColorTags containerTags = i < m_containerTags.size() ? m_containerTags[i] : ColorTags{};
    return filled(containerTags, tagsOf(stream(index)->codecpar));
}

const std::vector<Edit>& InputFile::edits(int index) const {
    static const std::vector<Edit> none;
    const auto found = m_timeline.edits.find(stream(index)->id);
    return !m_hasAppliedEdits && found != m_timeline.edits.end() ? found->second : none;
}

std::optional<CMTime> InputFile::endOfEdits(int index) const {
    const auto found = m_timeline.edits.find(stream(index)->id);
    if (found == m_timeline.edits.end() || found->second.back().isOpen())
        return std::nullopt;
    return time(index, found->second.back().end());
}

std::int64_t InputFile::timestampOffset(int index) const {
    if (!(m_context->iformat->flags & AVFMT_TS_DISCONT) || m_context->start_time == AV_NOPTS_VALUE)
        return 0;
    return av_rescale_q(m_context->start_time, AV_TIME_BASE_Q, stream(index)->time_base);
}

CMTime InputFile::time(int index, std::int64_t timestamp) const {
    std::int64_t ticks = 0;
    if (timestamp == AV_NOPTS_VALUE || __builtin_sub_overflow(timestamp, timestampOffset(index), &ticks))
        return kCMTimeInvalid;
    return timeFrom(ticks, stream(index)->time_base);
}

CMTime timeFrom(std::int64_t ticks, AVRational timeBase) {
    std::int64_t value = 0;
    if (ticks == AV_NOPTS_VALUE || __builtin_mul_overflow(ticks, timeBase.num, &value))
        return kCMTimeInvalid;
    return CMTimeMake(value, timeBase.den);
}

} // namespace anadrome::libav

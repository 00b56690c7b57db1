#pragma once

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/AVFoundation/Libav/MovieTimeline.h"
#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <vector>

namespace anadrome::libav {

/// A media file opened for reading, with its streams known. Only plain local files of movie formats are
/// opened: nothing in a file can make the demuxer open another one. One thread at a time.
class InputFile {
public:
    static Result<InputFile> open(const URL& url);

    AVFormatContext* context() const { return m_context.get(); }
    int streamCount() const { return static_cast<int>(m_context->nb_streams); }
    AVStream* stream(int index) const { return m_context->streams[index]; }

    /// The colour of a video stream: the container's word first, the bitstream's where the container is
    /// silent.
    ColorTags colorTags(int index) const;

    /// What is to be taken off every timestamp of a stream, in its time base. Not zero for broadcast streams,
    /// whose clocks start anywhere.
    std::int64_t timestampOffset(int index) const;

    bool isFragmented() const { return m_timeline.isFragmented; }

    /// The edits that are still to be applied to a stream's packets: what they tell is the media's own time.
    /// Empty where that is when they are shown, because there is no edit list or the demuxer has applied it.
    const std::vector<Edit>& edits(int index) const;
    /// Whether the demuxer has applied them.
    bool hasAppliedEdits() const { return m_hasAppliedEdits; }
    /// Where the last edit of a stream ends; nothing for one without, or whose last one ends with the media.
    std::optional<CMTime> endOfEdits(int index) const;

    /// A timestamp of a stream, offset taken off, as an exact time.
    CMTime time(int index, std::int64_t timestamp) const;

private:
    Owned<AVFormatContext> m_context;
    std::vector<ColorTags> m_containerTags;
    MovieTimeline m_timeline;
    bool m_hasAppliedEdits = true;
};

/// Ticks of a time base as an exact time; invalid for AV_NOPTS_VALUE.
CMTime timeFrom(std::int64_t ticks, AVRational timeBase);

} // namespace anadrome::libav

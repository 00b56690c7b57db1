#include "Platform/AVFoundation/Libav/Resampler.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

namespace anadrome::libav {

AVChannelLayout usualLayout(int channels) {
    AVChannelLayout layout{};
    av_channel_layout_default(&layout, channels);
    return layout;
}

Owned<SwrContext> makeResampler(SoundForm from, SoundForm to) {
    SwrContext* made = nullptr;
    const int result = swr_alloc_set_opts2(&made, &to.layout, to.format, to.rate, &from.layout, from.format,
                                           from.rate, 0, nullptr);
    Owned<SwrContext> resampler(made);
    if (result < 0)
        return nullptr;
    // Between rates without a small common ratio the library's steps between filters would be heard.
    av_opt_set_int(made, "linear_interp", 1, 0);
    constexpr double bothSides[] = {1, 1};
    if (from.layout.nb_channels == 1 && to.layout.nb_channels == 2 && swr_set_matrix(made, bothSides, 1) < 0)
        return nullptr;
    return swr_init(made) < 0 ? nullptr : std::move(resampler);
}

} // namespace anadrome::libav

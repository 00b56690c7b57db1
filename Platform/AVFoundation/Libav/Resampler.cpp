#include "Platform/AVFoundation/Libav/Resampler.h"

#include <vector>

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
    // Channels that come together must not grow louder than one could be.
    av_opt_set_double(made, "rematrix_maxval", 1, 0);
    constexpr double bothSides[] = {1, 1};
    if (from.layout.nb_channels == 1 && to.layout.nb_channels == 2 && swr_set_matrix(made, bothSides, 1) < 0)
        return nullptr;
    // Of channels that nobody knows the places of, the first two are taken for left and right.
    const auto channels = static_cast<std::size_t>(from.layout.nb_channels);
    if (from.layout.order == AV_CHANNEL_ORDER_UNSPEC && channels > 2 && to.layout.nb_channels == 2) {
        std::vector<double> firstTwo(2 * channels);
        firstTwo[0] = firstTwo[channels + 1] = 1;
        if (swr_set_matrix(made, firstTwo.data(), from.layout.nb_channels) < 0)
            return nullptr;
    }
    return swr_init(made) < 0 ? nullptr : std::move(resampler);
}

} // namespace anadrome::libav

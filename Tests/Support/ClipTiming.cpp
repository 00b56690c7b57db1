#include "Tests/Support/ClipTiming.h"

namespace anadrome::testing_support {

namespace {

std::int64_t totalTicks(const ClipOptions& options) {
    std::int64_t ticks = 0;
    for (int frame = 0; frame < options.frames; ++frame)
        ticks += durationOf(options, frame);
    return ticks;
}

} // namespace

AVRational timeBaseOf(const ClipOptions& options) {
    return options.frameTicks.empty() ? av_inv_q(options.frameRate) : AVRational{1, options.timeScale};
}

std::int64_t durationOf(const ClipOptions& options, int frame) {
    const auto& pattern = options.frameTicks;
    return pattern.empty() ? 1 : pattern[static_cast<std::size_t>(frame) % pattern.size()];
}

AVRational averageRate(const ClipOptions& options) {
    const AVRational timeBase = timeBaseOf(options);
    AVRational rate{};
    av_reduce(&rate.num, &rate.den, static_cast<std::int64_t>(options.frames) * timeBase.den,
              totalTicks(options) * timeBase.num, 1 << 24);
    return rate;
}

double videoSeconds(const ClipOptions& options) {
    return static_cast<double>(totalTicks(options)) * av_q2d(timeBaseOf(options));
}

} // namespace anadrome::testing_support

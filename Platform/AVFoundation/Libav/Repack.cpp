#include "Platform/AVFoundation/Libav/Repack.h"

#include <cstdint>

namespace anadrome::libav {

namespace {

template <typename Sample, int Shift>
void moveRow(const Sample* __restrict in, Sample* __restrict out, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<Sample>(in[i] >> Shift);
}

template <typename Sample, int Shift>
void splitRow(const Sample* __restrict in, Sample* __restrict first, Sample* __restrict second,
              std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        first[i] = static_cast<Sample>(in[2 * i] >> Shift);
        second[i] = static_cast<Sample>(in[2 * i + 1] >> Shift);
    }
}

template <typename Sample, int Shift>
void repack(const PixelPlanes& source, std::size_t width, std::size_t height, AVFrame& frame) {
    const auto in = [&](std::size_t plane, std::size_t row) {
        return reinterpret_cast<const Sample*>(source.addresses[plane] +
                                               static_cast<std::ptrdiff_t>(row) * source.strides[plane]);
    };
    const auto out = [&](int plane, std::size_t row) {
        return reinterpret_cast<Sample*>(frame.data[plane] +
                                         static_cast<std::ptrdiff_t>(row) * frame.linesize[plane]);
    };
    for (std::size_t row = 0; row < static_cast<std::size_t>(frame.height); ++row) {
        Sample* line = out(0, row);
        moveRow<Sample, Shift>(in(0, row < height ? row : height - 1), line, width);
        if (width % 2 != 0)
            line[width] = line[width - 1];
    }
    const std::size_t chromaWidth = (width + 1) / 2;
    const std::size_t chromaHeight = (height + 1) / 2;
    for (std::size_t row = 0; row < chromaHeight; ++row)
        splitRow<Sample, Shift>(in(1, row), out(1, row), out(2, row), chromaWidth);
}

} // namespace

void repackToPlanar(const PixelPlanes& source, std::size_t width, std::size_t height, AVFrame& destination) {
    if (destination.format == AV_PIX_FMT_YUV420P)
        repack<std::uint8_t, 0>(source, width, height, destination);
    else
        repack<std::uint16_t, 6>(source, width, height, destination);
}

} // namespace anadrome::libav

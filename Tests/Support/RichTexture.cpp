#include "Tests/Support/RichTexture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace anadrome::testing_support {

namespace {

constexpr std::size_t kGrainLength = 1 << 16;

std::uint32_t scrambled(std::uint32_t value) {
    value ^= value >> 16;
    value *= 0x7feb352du;
    value ^= value >> 15;
    value *= 0x846ca68bu;
    return value ^ (value >> 16);
}

float unitNoise(std::uint32_t seed) {
    return static_cast<float>(scrambled(seed)) / 4294967296.0f;
}

/// Random values on a grid of the given spacing, joined smoothly and added to the field.
void addNoise(std::vector<float>& field, int width, int height, int spacing, float amount,
              std::uint32_t seed) {
    const int columns = width / spacing + 2;
    const int rows = height / spacing + 2;
    std::vector<float> grid(static_cast<std::size_t>(columns * rows));
    for (std::size_t index = 0; index < grid.size(); ++index)
        grid[index] = amount * unitNoise(seed + static_cast<std::uint32_t>(index));
    const float step = 1.0f / static_cast<float>(spacing);
    for (int y = 0; y < height; ++y) {
        const float* upper = grid.data() + std::ptrdiff_t{y / spacing} * columns;
        const float* lower = upper + columns;
        const float down = static_cast<float>(y % spacing) * step;
        float* out = field.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
        for (int x = 0; x < width; ++x) {
            const int cell = x / spacing;
            const float along = static_cast<float>(x % spacing) * step;
            const float left = upper[cell] + (lower[cell] - upper[cell]) * down;
            const float right = upper[cell + 1] + (lower[cell + 1] - upper[cell + 1]) * down;
            out[x] += left + (right - left) * along;
        }
    }
}

/// Values from 0 to 1 with detail from half the height down to the finest
/// spacing; coarse detail is the strongest.
std::vector<float> naturalField(int width, int height, int finest, std::uint32_t seed) {
    std::vector<float> field(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    float amount = 1;
    float total = 0;
    for (int spacing = std::max(height / 2, finest); spacing >= finest; spacing /= 2) {
        addNoise(field, width, height, spacing, amount, seed);
        total += amount;
        amount *= 0.62f;
        seed = scrambled(seed + 1);
    }
    // The sum of many layers keeps close to its middle; this spreads it out.
    constexpr float kSpread = 1.7f;
    for (float& value : field)
        value = std::clamp(0.5f + kSpread * (value / total - 0.5f), 0.0f, 1.0f);
    return field;
}

void paintPlane(const Canvas& canvas, int plane, float low, float high) {
    const int width = canvas.planeWidth(plane);
    const int height = canvas.planeHeight(plane);
    const int finest = plane == 0 ? 2 : std::max(4, height / 32);
    const auto field = naturalField(width, height, finest, 77u + static_cast<std::uint32_t>(plane));
    const float* row = field.data();
    for (int y = 0; y < height; ++y, row += width)
        for (int x = 0; x < width; ++x)
            *canvas.sample(plane, x, y) = static_cast<std::uint8_t>(std::lround(low + (high - low) * row[x]));
}

double turn(int number, double framesARound) {
    return 2 * std::numbers::pi * number / framesARound;
}

} // namespace

RichTexture::RichTexture(int width, int height, AVPixelFormat format, const CodeValues& black,
                         const CodeValues& white)
    : reach_(std::max(8, height / 8) & ~1),
      texture_(makePicture(width + 2 * reach_, height + 2 * reach_, format)),
      grain_(kGrainLength + static_cast<std::size_t>(width)) {
    const Canvas canvas(*texture_);
    if (canvas.depth() != 8)
        throw std::runtime_error("rich pictures have 8 bits");
    paintPlane(canvas, 0, black[0], white[0]);
    for (int plane = 1; plane < canvas.planeCount(); ++plane) {
        const float middle = black[1];
        const float swing = middle * 0.4f;
        paintPlane(canvas, plane, middle - swing, middle + swing);
    }
    constexpr float kStrength = 6;
    for (std::size_t index = 0; index < grain_.size(); ++index) {
        const auto seed = static_cast<std::uint32_t>(4 * index + 1000003);
        const float bell = unitNoise(seed) + unitNoise(seed + 1) + unitNoise(seed + 2) - 1.5f;
        grain_[index] = static_cast<std::int16_t>(std::lround(kStrength * bell));
    }
}

void RichTexture::draw(Canvas& canvas, int number) const {
    const Canvas texture(*texture_);
    const auto pan = [&](double angle) {
        return std::clamp(static_cast<int>(std::lround(reach_ * (1 + std::sin(angle)))), 0, 2 * reach_);
    };
    canvas.copyFrom(texture, pan(turn(number, 190)), pan(turn(number, 260) + 1),
                    {0, 0, canvas.width(), canvas.height()});
    for (int piece = 0; piece < 5; ++piece) {
        const double phase = piece * 1.3;
        const int x = static_cast<int>(canvas.width() *
                                       (0.5 + 0.42 * std::sin(turn(number, 140 + 30 * piece) + phase)));
        const int y = static_cast<int>(canvas.height() *
                                       (0.5 + 0.42 * std::cos(turn(number, 170 + 20 * piece) + 2 * phase)));
        const int half = static_cast<int>(canvas.height() * (0.08 + 0.02 * piece));
        canvas.copyFrom(texture, pan(turn(number, -110 - 17 * piece)), pan(phase),
                        {x - half, y - half, x + half, y + half});
    }
    addGrain(canvas, number);
}

void RichTexture::addGrain(Canvas& canvas, int number) const {
    for (int y = 0; y < canvas.height(); ++y) {
        const auto seed = static_cast<std::uint32_t>(number * 8191 + y);
        const std::int16_t* grain = grain_.data() + scrambled(seed) % kGrainLength;
        std::uint8_t* row = canvas.row(0, y);
        for (int x = 0; x < canvas.width(); ++x)
            row[x] = static_cast<std::uint8_t>(std::clamp(row[x] + grain[x], 0, 255));
    }
}

} // namespace anadrome::testing_support

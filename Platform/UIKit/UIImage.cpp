#include "Platform/UIKit/UIImage.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace anadrome {

namespace {

constexpr std::array<std::string_view, 9> symbols{
    "apps.iphone", "circle.fill",         "envelope", "ladybug", "newspaper", "pause.circle", "pencil",
    "play.circle", "square.and.arrow.up",
};

} // namespace

UIImageRef UIImage::systemImageNamed(const std::string& name) {
    const bool isKnown = std::find(symbols.begin(), symbols.end(), name) != symbols.end();
    return isKnown ? UIImageRef(new UIImage(name)) : nullptr;
}

} // namespace anadrome

#include "Platform/CoreMedia/CMFormatDescription.h"

namespace anadrome {

const std::optional<Dictionary>& CMFormatDescriptionGetExtensions(const CMFormatDescriptionRef& description) {
    static const std::optional<Dictionary> none;
    return description ? description->extensions : none;
}

} // namespace anadrome

#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Services/Ads/GADAdContent.h"

#include <string>

namespace anadrome {

/// What an ad server said.
struct GADAdAnswer {
    /// Still without its picture.
    GADAdContent content;
    /// Empty if there is no picture.
    std::string pictureAddress;

    /// Reads an answer: JSON, or nothing if there is no ad. Whatever is wrong is an error of GADErrorDomain.
    static Result<GADAdAnswer> parse(const std::string& answer);
};

} // namespace anadrome

#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace anadrome {

/// What an ad shows: a text, a picture, or both.
struct GADAdContent {
    using Date = std::chrono::system_clock::time_point;

    std::string text = {};
    /// Where a click leads; an ad without one can't be clicked.
    std::string link = {};
    /// An encoded picture as the server gave it, for the front end to decode; it may be no picture at all.
    std::string picture = {};
    /// In points; empty for the height of the ad's place.
    std::optional<int> height = {};
    /// When the ad came, and how long it may be shown after that, if not as long as its kind allows.
    Date received = std::chrono::system_clock::now();
    std::optional<std::chrono::seconds> lifetime = {};
};

/// The user clicks on the ad: opens its link, if that is a web address.
void clickAd(const GADAdContent& content);

} // namespace anadrome

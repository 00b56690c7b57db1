#pragma once

#include "Platform/Foundation/NSError.h"

#include <optional>
#include <string>

namespace anadrome {

/// Sound is what the program is for: it is heard even where others are kept quiet.
inline constexpr const char* AVAudioSessionCategoryPlayback = "AVAudioSessionCategoryPlayback";

/// How the program's sound goes together with that of others. Main thread only.
class AVAudioSession {
public:
    static AVAudioSession& sharedInstance();

    /// Empty until it is set.
    const std::string& category() const { return m_category; }
    /// Fails for a category that isn't known here.
    std::optional<NSError> setCategory(const std::string& category);

private:
    AVAudioSession() = default;

    std::string m_category;
};

} // namespace anadrome

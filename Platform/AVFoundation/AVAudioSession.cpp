#include "Platform/AVFoundation/AVAudioSession.h"

namespace anadrome {

AVAudioSession& AVAudioSession::sharedInstance() {
    static AVAudioSession session;
    return session;
}

std::optional<NSError> AVAudioSession::setCategory(const std::string& category) {
    if (category != AVAudioSessionCategoryPlayback)
        return NSError(NSPOSIXErrorDomain, 22, "There is no sound category named " + category + ".");
    m_category = category;
    return std::nullopt;
}

} // namespace anadrome

#pragma once

#include <optional>

namespace anadrome {

/// What the user's law and will are, for ad servers: sent with every request for an ad once it is set. Main
/// thread only.
class ALPrivacySettings {
public:
    static void setHasUserConsent(bool hasUserConsent) { s_hasUserConsent = hasUserConsent; }
    static void setDoNotSell(bool doNotSell) { s_doNotSell = doNotSell; }

    /// Empty until set.
    static std::optional<bool> hasUserConsent() { return s_hasUserConsent; }
    static std::optional<bool> doNotSell() { return s_doNotSell; }

private:
    static inline std::optional<bool> s_hasUserConsent;
    static inline std::optional<bool> s_doNotSell;
};

} // namespace anadrome

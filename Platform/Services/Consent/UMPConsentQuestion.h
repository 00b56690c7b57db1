#pragma once

#include "Platform/Foundation/Result.h"

#include <string>
#include <vector>

namespace anadrome {

/// Something that the user's data would be used for.
struct UMPConsentPurpose {
    std::string identifier;
    /// In the user's language.
    std::string name;
    friend bool operator==(const UMPConsentPurpose&, const UMPConsentPurpose&) = default;
};

/// What the user is asked.
struct UMPConsentQuestion {
    bool isRequired = false;
    /// In the user's language; empty if the program's own is to be shown.
    std::string message;
    std::vector<UMPConsentPurpose> purposes;
    friend bool operator==(const UMPConsentQuestion&, const UMPConsentQuestion&) = default;

    /// Reads a consent server's answer, as JSON. The texts are chosen in that language, else in English. An
    /// answer that isn't as it should be is an error of UMPErrorDomain.
    static Result<UMPConsentQuestion> parse(const std::string& answer, const std::string& language);
};

} // namespace anadrome

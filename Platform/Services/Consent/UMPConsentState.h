#pragma once

#include <map>
#include <string>

namespace anadrome {

/// Obtained means that the form was answered, whatever the answer.
enum class UMPConsentStatus { unknown = 0, required = 1, notRequired = 2, obtained = 3 };

/// What the user said.
struct UMPConsentAnswers {
    bool isAllAccepted = false;
    /// To each purpose that the form named, by its identifier.
    std::map<std::string, bool> byPurpose;
    friend bool operator==(const UMPConsentAnswers&, const UMPConsentAnswers&) = default;
};

/// What outlives the program of the user's consent.
struct UMPConsentState {
    UMPConsentStatus status = UMPConsentStatus::unknown;
    UMPConsentAnswers answers;

    /// What the user's state folder holds; the first state if there is nothing that can be understood.
    static UMPConsentState stored();
    /// Replaces what is stored, in one step. A debug line tells of a failure.
    void store() const;
};

} // namespace anadrome

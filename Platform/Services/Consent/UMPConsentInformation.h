#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Services/Consent/UMPConsentQuestion.h"
#include "Platform/Services/Consent/UMPConsentState.h"
#include "Platform/Services/Consent/UMPRequestParameters.h"

#include <functional>
#include <optional>
#include <string>

namespace anadrome {

/// Whether the user has to be asked before ads, and what the answer was. Outlives the updates that it is
/// asked for. Main thread only.
class UMPConsentInformation {
public:
    using Completion = std::function<void(const std::optional<NSError>& error)>;

    /// The program's one.
    static UMPConsentInformation& sharedInstance();

    /// Takes up what the last run stored, at once, and asks the deployment's consent server whether consent
    /// is required. A form that was answered stays so. Completes once, on the main queue, never before the
    /// call returns; after an error the state is what was stored.
    void requestConsentInfoUpdateWithParameters(const UMPRequestParameters& parameters,
                                                const Completion& completion);

    /// False until an update is requested.
    bool canRequestAds() const;
    UMPConsentStatus consentStatus() const { return m_state.status; }

    /// Whether ads may be chosen for this user: nobody requires consent, or all was accepted.
    bool mayPersonaliseAds() const;

    /// What the form asks; empty if the server hasn't said.
    const std::optional<UMPConsentQuestion>& question() const { return m_question; }
    /// The user has answered the form, which is stored.
    void takeAnswers(UMPConsentAnswers answers);

private:
    std::optional<NSError> takeAnswerOfServer(const Result<std::string>& answer);

    bool m_wasRequested = false;
    bool m_isUnderAge = false;
    UMPConsentState m_state;
    std::optional<UMPConsentQuestion> m_question;
};

} // namespace anadrome

#include "Platform/Services/Consent/UMPConsentInformation.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/PreferredLanguage.h"
#include "Platform/Services/Consent/UMPError.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/Http/HttpClient.h"

namespace anadrome {

UMPConsentInformation& UMPConsentInformation::sharedInstance() {
    static UMPConsentInformation instance;
    return instance;
}

void UMPConsentInformation::requestConsentInfoUpdateWithParameters(const UMPRequestParameters& parameters,
                                                                   const Completion& completion) {
    m_wasRequested = true;
    m_isUnderAge = parameters.tagForUnderAgeOfConsent();
    m_state = UMPConsentState::stored();
    m_question.reset();
    const std::string& endpoint = Deployment::current().consentEndpoint;
    if (endpoint.empty())
        return DispatchQueue::main().async([completion] {
            completion(NSError(UMPErrorDomain, UMPRequestErrorCodeMisconfiguration,
                               "No consent server is configured."));
        });
    HttpClient::send({.address = endpoint}, [this, completion](const Result<std::string>& answer) {
        completion(takeAnswerOfServer(answer));
    });
}

std::optional<NSError> UMPConsentInformation::takeAnswerOfServer(const Result<std::string>& answer) {
    if (!answer)
        return NSError(UMPErrorDomain, UMPRequestErrorCodeNetwork, answer.error().localizedDescription(),
                       answer.error());
    Result<UMPConsentQuestion> question = UMPConsentQuestion::parse(*answer, preferredLanguage({"en", "ja"}));
    if (!question)
        return question.error();
    m_question = std::move(*question);
    if (m_state.status == UMPConsentStatus::obtained)
        return std::nullopt;
    m_state.status = m_question->isRequired ? UMPConsentStatus::required : UMPConsentStatus::notRequired;
    m_state.store();
    return std::nullopt;
}

bool UMPConsentInformation::canRequestAds() const {
    return m_wasRequested &&
           (m_state.status == UMPConsentStatus::notRequired || m_state.status == UMPConsentStatus::obtained);
}

bool UMPConsentInformation::mayPersonaliseAds() const {
    const bool isAllowed = m_state.status == UMPConsentStatus::notRequired ||
                           (m_state.status == UMPConsentStatus::obtained && m_state.answers.isAllAccepted);
    return isAllowed && !m_isUnderAge;
}

void UMPConsentInformation::takeAnswers(UMPConsentAnswers answers) {
    m_state = {UMPConsentStatus::obtained, std::move(answers)};
    m_state.store();
}

} // namespace anadrome

#include "Platform/Services/Consent/UMPConsentQuestion.h"

#include "Platform/Services/Consent/UMPError.h"
#include "Platform/Services/Http/AnswerFields.h"

#include <algorithm>

namespace anadrome {

namespace {

constexpr std::size_t longestMessage = 4000;
constexpr std::size_t longestName = 200;
constexpr std::size_t longestIdentifier = 100;
constexpr std::size_t mostPurposes = 50;

std::vector<UMPConsentPurpose> purposesIn(AnswerFields& fields, const std::string& language) {
    std::vector<UMPConsentPurpose> purposes;
    for (AnswerFields& each : fields.objects("purposes", mostPurposes)) {
        UMPConsentPurpose purpose{each.text("id", longestIdentifier),
                                  each.localizedText("name", language, longestName)};
        if (purpose.identifier.empty() || purpose.name.empty())
            each.setFault("there is no id or no name");
        if (std::ranges::find(purposes, purpose.identifier, &UMPConsentPurpose::identifier) != purposes.end())
            each.setFault("the id stands there twice");
        if (!each.fault().empty())
            fields.setFault("in purposes, " + each.fault());
        purposes.push_back(std::move(purpose));
    }
    return purposes;
}

} // namespace

Result<UMPConsentQuestion> UMPConsentQuestion::parse(const std::string& answer, const std::string& language) {
    AnswerFields fields = AnswerFields::parse(answer);
    const std::optional<bool> isRequired = fields.boolean("required");
    if (!isRequired)
        fields.setFault("required is missing");
    UMPConsentQuestion question{isRequired.value_or(false),
                                fields.localizedText("message", language, longestMessage),
                                purposesIn(fields, language)};
    if (fields.fault().empty())
        return question;
    return NSError(UMPErrorDomain, UMPRequestErrorCodeInternal,
                   "The consent server's answer can't be used: " + fields.fault() + '.');
}

} // namespace anadrome

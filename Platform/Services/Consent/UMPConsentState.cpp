#include "Platform/Services/Consent/UMPConsentState.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/SmallFile.h"
#include "Platform/Foundation/UserFolders.h"

#include <nlohmann/json.hpp>
#include <optional>

namespace anadrome {

namespace {

constexpr std::size_t largestFile = 256 * 1024;

/// Empty if the user has no home.
std::string stateFile() {
    const std::string folder = userStateFolder();
    return folder.empty() ? "" : folder + "/anadrome/consent.json";
}

std::optional<UMPConsentStatus> statusIn(const nlohmann::json& state) {
    const auto field = state.find("status");
    if (field == state.end() || !field->is_number_integer())
        return std::nullopt;
    for (const auto status : {UMPConsentStatus::unknown, UMPConsentStatus::required,
                              UMPConsentStatus::notRequired, UMPConsentStatus::obtained})
        if (*field == static_cast<int>(status))
            return status;
    return std::nullopt;
}

UMPConsentAnswers answersIn(const nlohmann::json& state) {
    UMPConsentAnswers answers;
    if (const auto all = state.find("allAccepted"); all != state.end() && all->is_boolean())
        answers.isAllAccepted = all->get<bool>();
    if (const auto purposes = state.find("purposes"); purposes != state.end() && purposes->is_object())
        for (const auto& [identifier, isAccepted] : purposes->items())
            if (isAccepted.is_boolean())
                answers.byPurpose[identifier] = isAccepted.get<bool>();
    return answers;
}

} // namespace

UMPConsentState UMPConsentState::stored() {
    const auto content = readSmallFile(stateFile(), largestFile);
    const auto state = nlohmann::json::parse(content ? *content : "", nullptr, false);
    if (!state.is_object())
        return {};
    const auto status = statusIn(state);
    return status ? UMPConsentState{*status, answersIn(state)} : UMPConsentState();
}

void UMPConsentState::store() const {
    const nlohmann::json state{{"status", static_cast<int>(status)},
                               {"allAccepted", answers.isAllAccepted},
                               {"purposes", answers.byPurpose}};
    if (const auto error = replaceSmallFile(stateFile(), state.dump()))
        debugLog("The consent can't be stored: " + error->description());
}

} // namespace anadrome

#include "Platform/Services/Ads/GADAdServer.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/SmallFile.h"
#include "Platform/Services/Ads/ALPrivacySettings.h"
#include "Platform/Services/Ads/GADAdAnswer.h"
#include "Platform/Services/Ads/GADMobileAds.h"
#include "Platform/Services/Consent/UMPConsentInformation.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/Http/HttpClient.h"
#include "Platform/Services/Http/HttpQuery.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

namespace {

/// Bytes.
constexpr std::size_t largestPicture = 4 * 1024 * 1024;

std::string nameOf(GADAdFormat format) {
    switch (format) {
    case GADAdFormat::appOpen:
        return "app-open";
    case GADAdFormat::interstitial:
        return "interstitial";
    case GADAdFormat::banner:
        break;
    }
    return "banner";
}

std::string textOf(bool flag) {
    return flag ? "1" : "0";
}

std::string textOf(CGFloat points) {
    return std::to_string(std::lround(points));
}

NSError networkError(const NSError& cause) {
    return NSError(GADErrorDomain, GADErrorNetworkError, cause.localizedDescription(), cause);
}

void failLater(const GADAdSource::Completion& completion, GADErrorCode code, const std::string& reason) {
    DispatchQueue::main().async(
        [completion, error = NSError(GADErrorDomain, code, reason)] { completion(error); });
}

void fetchPicture(const GADAdAnswer& ad, const GADAdSource::Completion& completion) {
    HttpClient::send({.address = ad.pictureAddress, .maximumLength = largestPicture},
                     [completion, content = ad.content](Result<std::string> picture) mutable {
                         if (!picture)
                             return completion(networkError(picture.error()));
                         if (picture->empty())
                             return completion(NSError(GADErrorDomain, GADErrorReceivedInvalidResponse,
                                                       "The ad's picture is empty."));
                         content.picture = std::move(*picture);
                         content.received = std::chrono::system_clock::now();
                         completion(std::move(content));
                     });
}

void takeAnswer(const Result<std::string>& answer, const GADAdSource::Completion& completion) {
    if (!answer)
        return completion(networkError(answer.error()));
    Result<GADAdAnswer> ad = GADAdAnswer::parse(*answer);
    if (!ad)
        return completion(ad.error());
    if (ad->pictureAddress.empty())
        return completion(std::move(ad->content));
    fetchPicture(*ad, completion);
}

} // namespace

void GADAdServer::fetch(const GADAdPlace& place, const GADRequest& request, Completion completion) {
    const std::string& endpoint = Deployment::current().adEndpoint;
    if (!isDeployed())
        return failLater(completion, GADErrorNetworkError, "No ad server is configured.");
    if (place.adUnitID.empty())
        return failLater(completion, GADErrorInvalidRequest, "The place of the ad has no unit identifier.");
    HttpClient::send({.address = addressWithQuery(endpoint, parameters(place, request))},
                     [completion = std::move(completion)](const Result<std::string>& answer) {
                         takeAnswer(answer, completion);
                     });
}

bool GADAdServer::isDeployed() const {
    return !Deployment::current().adEndpoint.empty();
}

GADAdServer::Parameters GADAdServer::parameters(const GADAdPlace& place, const GADRequest& request) const {
    Parameters all{{"unit", place.adUnitID},
                   {"format", nameOf(place.format)},
                   {"width", textOf(place.size.width)},
                   {"height", textOf(place.size.height)}};
    const auto& extras = request.adNetworkExtras().additionalParameters();
    all.insert(all.end(), extras.begin(), extras.end());
    if (isTestDevice())
        all.emplace_back("test", "1");
    all.emplace_back("personalised", textOf(UMPConsentInformation::sharedInstance().mayPersonaliseAds()));
    if (const auto hasConsent = ALPrivacySettings::hasUserConsent())
        all.emplace_back("user-consent", textOf(*hasConsent));
    if (const auto doNotSell = ALPrivacySettings::doNotSell())
        all.emplace_back("do-not-sell", textOf(*doNotSell));
    return all;
}

bool GADAdServer::isTestDevice() const {
    const auto& identifiers = GADMobileAds::sharedInstance().requestConfiguration().testDeviceIdentifiers();
    constexpr std::size_t identifierLength = 32;
    const auto file = readSmallFile(m_machineIdentifierFile, identifierLength + 1);
    const std::string own = file ? (*file).substr(0, (*file).find('\n')) : "";
    return !own.empty() && std::ranges::find(identifiers, own) != identifiers.end();
}

} // namespace anadrome

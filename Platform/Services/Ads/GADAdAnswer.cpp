#include "Platform/Services/Ads/GADAdAnswer.h"

#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/Services/Http/AnswerFields.h"

#include <cmath>

namespace anadrome {

namespace {

constexpr std::size_t longestText = 1000;
/// Points; higher than any screen.
constexpr double largestHeight = 10'000;
/// Seconds: a year, longer than any kind of ad allows.
constexpr double longestLifetime = 366.0 * 24 * 3600;

} // namespace

Result<GADAdAnswer> GADAdAnswer::parse(const std::string& answer) {
    if (answer.empty())
        return NSError(GADErrorDomain, GADErrorNoFill, "The ad server has no ad.");
    AnswerFields fields = AnswerFields::parse(answer);
    GADAdAnswer ad;
    ad.content.text = fields.text("text", longestText);
    ad.content.link = fields.address("link");
    ad.pictureAddress = fields.address("picture");
    if (const auto height = fields.number("height", 1, largestHeight))
        ad.content.height = static_cast<int>(std::lround(*height));
    if (const auto lifetime = fields.number("expires", 0, longestLifetime))
        ad.content.lifetime = std::chrono::seconds(std::lround(*lifetime));
    if (ad.content.text.empty() && ad.pictureAddress.empty())
        fields.setFault("there is neither a text nor a picture");
    if (fields.fault().empty())
        return ad;
    return NSError(GADErrorDomain, GADErrorReceivedInvalidResponse,
                   "The ad server's answer can't be used: " + fields.fault() + '.');
}

} // namespace anadrome

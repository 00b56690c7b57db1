#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace anadrome {

/// What whoever deploys the program chooses: where its services are, and where people find it. Every value is
/// empty unless a file gives it, and without an endpoint a service asks nobody. docs/deployment.md tells of
/// each value and of what an endpoint answers.
struct Deployment {
    /// Addresses of services, http or https.
    std::string adEndpoint{};
    std::string consentEndpoint{};
    std::string analyticsEndpoint{};
    std::string remoteConfigEndpoint{};

    /// The ad network's names for the program's places.
    std::string appOpenAdUnitID{};
    std::string interstitialAdUnitID{};
    std::string bannerAdUnitID{};
    /// Of the machine that gets test ads: 32 lower-case hexadecimal digits.
    std::string testDeviceIdentifier{};

    /// The store's site, and the program's number there.
    std::string storeAddress{};
    std::string storeIdentifier{};
    /// The maker's page in the store, and web site.
    std::string makerStorePage{};
    std::string makerWebSite{};
    std::string feedbackMailAddress{};
    /// The store's numbers of the other programs that the first screen shows.
    std::array<std::string, 5> appStripIdentifiers{};

    /// The program's values: read at the first use from /etc/anadrome/deployment.conf and then, value by
    /// value over those, from anadrome/deployment.conf in the user's configuration folder. Wrong lines are
    /// printed. Any thread.
    static const Deployment& current();
    /// Replaces them, before other threads ask.
    static void setCurrent(Deployment values);

    /// Reads files of lines "key = value", with empty lines and lines that begin with "#"; later files win. A
    /// missing file has no lines, and an empty value takes one of an earlier file back. A line that can't be
    /// understood, and a value that is wrong for its key, is told to `complain` in one line with file, number
    /// and reason; the value before it stays. So is a file that can't be read or is larger than 64 kB.
    static Deployment read(const std::vector<std::string>& files,
                           const std::function<void(std::string_view line)>& complain);

    /// The program's page in the store, and the page where people write a review of it; empty if the site or
    /// the number is.
    std::string storePage() const;
    /// Of any product, by its number in the store.
    std::string productPage(const std::string& identifier) const;
    std::string reviewPage() const;
};

} // namespace anadrome

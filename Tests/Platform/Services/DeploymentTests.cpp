#include "Platform/Services/Deployment.h"
#include "Tests/Support/ScratchFolder.h"

#include <fstream>
#include <gtest/gtest.h>

using namespace anadrome;
using namespace anadrome::testing_support;

namespace {

std::vector<std::string> complaintsAbout(const std::string& path) {
    std::vector<std::string> complaints;
    Deployment::read({path}, [&](std::string_view line) { complaints.emplace_back(line); });
    return complaints;
}

} // namespace

TEST(Deployment, TellsWhatIsWrongWithALine) {
    struct {
        std::string line, complaint;
    } const cases[] = {
        {"# adEndpoint: none", ""},
        {"  adEndpoint=https://ads.example.com:8443/serve?region=1  \r", ""},
        {"adEndpoint =", ""},
        {"adEndpoint = ftp://x", "adEndpoint: not an http or https address: ftp://x"},
        {"consentEndpoint = https://", "consentEndpoint: not an http or https address: https://"},
        {"analyticsEndpoint = https://me:secret@x/",
         "analyticsEndpoint: not an http or https address: https://me:secret@x/"},
        {"remoteConfigEndpoint = http://a b",
         "remoteConfigEndpoint: not an http or https address: http://a b"},
        {"bannerAdUnitID = net-pub-12/34_a.b~c", ""},
        {"bannerAdUnitID = a&b", "bannerAdUnitID: not a unit's identifier of letters, digits and -_./~: a&b"},
        {"testDeviceIdentifier = 0123456789abcdef0123456789abcdef", ""},
        {"testDeviceIdentifier = 0123456789ABCDEF0123456789ABCDEF",
         "testDeviceIdentifier: not 32 lower-case hexadecimal digits: 0123456789ABCDEF0123456789ABCDEF"},
        {"storeAddress = https://store.example.com/?a",
         "storeAddress: not an http or https address without ? and #: https://store.example.com/?a"},
        {"appStripIdentifier5 = id12", "appStripIdentifier5: not a number of at most 20 digits: id12"},
        {"feedbackMailAddress = a.b+c@example.com", ""},
        {"feedbackMailAddress = a@b?subject=c", "feedbackMailAddress: not a mail address: a@b?subject=c"},
        {"feedbackMailAddress = @b", "feedbackMailAddress: not a mail address: @b"},
        {"appStripIdentifier6 = 1", "no such key: appStripIdentifier6"},
        {"adEndpoint", "not of the form key = value"},
    };
    const ScratchFolder folder;
    const std::string path = folder.file("deployment.conf");
    for (const auto& [line, complaint] : cases) {
        std::ofstream(path) << "\n" << line;
        const std::vector<std::string> expected(complaint.empty() ? 0 : 1, path + ":2: " + complaint);
        EXPECT_EQ(complaintsAbout(path), expected) << line;
    }
    EXPECT_EQ(complaintsAbout(folder.file("missing")), std::vector<std::string>());
    EXPECT_EQ(complaintsAbout(folder.path()),
              std::vector<std::string>{folder.path().string() + ": can't be read: Invalid argument"});
}

TEST(Deployment, TakesLaterFilesOverEarlierOnes) {
    const ScratchFolder folder;
    std::ofstream(folder.file("system"))
        << "storeAddress = https://store.example.com/\nstoreIdentifier = 1\n"
           "adEndpoint = https://ads.example.com\nappStripIdentifier2 = 22\n";
    std::ofstream(folder.file("user")) << "storeIdentifier = 123\nstoreIdentifier = one\nadEndpoint =\n";
    const Deployment values =
        Deployment::read({folder.file("system"), folder.file("user")}, [](std::string_view) {});
    EXPECT_EQ(values.adEndpoint, "");
    EXPECT_EQ(values.appStripIdentifiers, (std::array<std::string, 5>{"", "22", "", "", ""}));
    EXPECT_EQ(values.storePage(), "https://store.example.com/us/app/id123?mt=8");
    EXPECT_EQ(values.reviewPage(), "https://store.example.com/us/app/itunes-u/id123?action=write-review");
    EXPECT_EQ(Deployment().storePage(), "");
}

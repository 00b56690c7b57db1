#include "Platform/Services/Deployment.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/SmallFile.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/Services/Http/HttpAddress.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <sstream>
#include <utility>

namespace anadrome {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view lettersAndDigits =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

bool consistsOf(std::string_view text, std::string_view first, std::string_view others = "") {
    return !text.empty() && std::ranges::all_of(text, [&](char character) {
        return first.find(character) != first.npos || others.find(character) != others.npos;
    });
}

bool isSite(std::string_view text) {
    return isHttpAddress(text) && text.find_first_of("?#") == text.npos;
}

bool isUnitID(std::string_view text) {
    return text.size() <= 100 && consistsOf(text, lettersAndDigits, "-_./~");
}

bool isDeviceIdentifier(std::string_view text) {
    return text.size() == 32 && consistsOf(text, digits, "abcdef");
}

bool isStoreIdentifier(std::string_view text) {
    return text.size() <= 20 && consistsOf(text, digits);
}

bool isMailAddress(std::string_view text) {
    const std::size_t at = text.find('@');
    return at != text.npos && consistsOf(text.substr(0, at), lettersAndDigits, ".+-_") &&
           consistsOf(text.substr(at + 1), lettersAndDigits, ".-");
}

/// What values a key takes.
struct Kind {
    bool (*holds)(std::string_view text);
    std::string_view otherwise;
};

constexpr Kind address{isHttpAddress, "not an http or https address"};
constexpr Kind site{isSite, "not an http or https address without ? and #"};
constexpr Kind unitID{isUnitID, "not a unit's identifier of letters, digits and -_./~"};
constexpr Kind deviceIdentifier{isDeviceIdentifier, "not 32 lower-case hexadecimal digits"};
constexpr Kind storeIdentifier{isStoreIdentifier, "not a number of at most 20 digits"};
constexpr Kind mailAddress{isMailAddress, "not a mail address"};

struct Key {
    std::string_view name;
    Kind kind;
    std::string& (*field)(Deployment& values);
};

template <std::string Deployment::*member>
std::string& field(Deployment& values) {
    return values.*member;
}

template <std::size_t index>
std::string& stripField(Deployment& values) {
    return values.appStripIdentifiers[index];
}

constexpr Key keys[] = {
    {"adEndpoint", address, field<&Deployment::adEndpoint>},
    {"consentEndpoint", address, field<&Deployment::consentEndpoint>},
    {"analyticsEndpoint", address, field<&Deployment::analyticsEndpoint>},
    {"remoteConfigEndpoint", address, field<&Deployment::remoteConfigEndpoint>},
    {"appOpenAdUnitID", unitID, field<&Deployment::appOpenAdUnitID>},
    {"interstitialAdUnitID", unitID, field<&Deployment::interstitialAdUnitID>},
    {"bannerAdUnitID", unitID, field<&Deployment::bannerAdUnitID>},
    {"testDeviceIdentifier", deviceIdentifier, field<&Deployment::testDeviceIdentifier>},
    {"storeAddress", site, field<&Deployment::storeAddress>},
    {"storeIdentifier", storeIdentifier, field<&Deployment::storeIdentifier>},
    {"makerStorePage", address, field<&Deployment::makerStorePage>},
    {"makerWebSite", address, field<&Deployment::makerWebSite>},
    {"feedbackMailAddress", mailAddress, field<&Deployment::feedbackMailAddress>},
    {"appStripIdentifier1", storeIdentifier, stripField<0>},
    {"appStripIdentifier2", storeIdentifier, stripField<1>},
    {"appStripIdentifier3", storeIdentifier, stripField<2>},
    {"appStripIdentifier4", storeIdentifier, stripField<3>},
    {"appStripIdentifier5", storeIdentifier, stripField<4>},
};

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t start = text.find_first_not_of(blanks);
    return start == text.npos ? "" : text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

/// Takes over what a line says; tells what is wrong with it otherwise.
std::optional<std::string> takeLine(std::string_view line, Deployment& values) {
    if (line.empty() || line.starts_with('#'))
        return std::nullopt;
    const std::size_t equals = line.find('=');
    if (equals == line.npos)
        return "not of the form key = value";
    const std::string_view name = trimmed(line.substr(0, equals));
    const std::string_view value = trimmed(line.substr(equals + 1));
    const auto key = std::ranges::find(keys, name, &Key::name);
    if (key == std::end(keys))
        return "no such key: " + std::string(name);
    if (!value.empty() && !key->kind.holds(value))
        return std::string(name).append(": ").append(key->kind.otherwise).append(": ").append(value);
    key->field(values) = value;
    return std::nullopt;
}

void takeFile(const std::string& path, Deployment& values,
              const std::function<void(std::string_view line)>& complain) {
    constexpr std::size_t maximumLength = 64 * 1024;
    const auto content = readSmallFile(path, maximumLength);
    if (!content) {
        if (content.error().code() != NSFileReadNoSuchFileError)
            complain(path + ": can't be read: " + content.error().underlying()->localizedDescription());
        return;
    }
    std::istringstream lines(*content);
    int number = 1;
    for (std::string line; std::getline(lines, line); ++number)
        if (const auto wrong = takeLine(trimmed(line), values))
            complain(path + ':' + std::to_string(number) + ": " + *wrong);
}

/// The program's values. Never destroyed: threads may ask while statics are torn down.
struct Current {
    static Current& shared() {
        static Current& current = *new Current;
        return current;
    }

    std::mutex mutex;
    std::optional<Deployment> values;
};

Deployment installed() {
    std::vector<std::string> files = {"/etc/anadrome/deployment.conf"};
    if (const std::string folder = userConfigurationFolder(); !folder.empty())
        files.push_back(folder + "/anadrome/deployment.conf");
    return Deployment::read(files, print);
}

/// A page in a store; empty without a site or a number.
std::string pageIn(std::string store, std::string_view path, const std::string& identifier,
                   std::string_view query) {
    if (store.empty() || identifier.empty())
        return "";
    while (store.ends_with('/'))
        store.pop_back();
    return store.append(path).append(identifier).append(query);
}

} // namespace

const Deployment& Deployment::current() {
    Current& current = Current::shared();
    std::lock_guard lock(current.mutex);
    if (!current.values)
        current.values = installed();
    return *current.values;
}

void Deployment::setCurrent(Deployment values) {
    Current& current = Current::shared();
    std::lock_guard lock(current.mutex);
    current.values = std::move(values);
}

Deployment Deployment::read(const std::vector<std::string>& files,
                            const std::function<void(std::string_view line)>& complain) {
    Deployment values;
    for (const std::string& file : files)
        takeFile(file, values, complain);
    return values;
}

std::string Deployment::storePage() const {
    return productPage(storeIdentifier);
}

std::string Deployment::productPage(const std::string& identifier) const {
    return pageIn(storeAddress, "/us/app/id", identifier, "?mt=8");
}

std::string Deployment::reviewPage() const {
    return pageIn(storeAddress, "/us/app/itunes-u/id", storeIdentifier, "?action=write-review");
}

} // namespace anadrome

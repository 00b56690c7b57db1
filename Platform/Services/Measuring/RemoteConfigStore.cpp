#include "Platform/Services/Measuring/RemoteConfigStore.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/SmallFile.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

namespace anadrome {

namespace {

using Milliseconds = std::chrono::milliseconds;
using nlohmann::json;

/// Bytes; more than the longest answer gives.
constexpr std::size_t largestFile = 4 * 1024 * 1024;
/// Some 280 years from 1970: what the clock can count.
constexpr std::int64_t latestTime = 9'000'000'000'000;
constexpr const char* valuesKey = "values";
constexpr const char* timeKey = "fetchedAtMilliseconds";

std::optional<RemoteConfigValues> valuesIn(const json& content) {
    const auto values = content.find(valuesKey);
    if (!content.is_object() || values == content.end() || !values->is_object())
        return std::nullopt;
    RemoteConfigValues found;
    for (const auto& [key, value] : values->items()) {
        const auto* text = value.get_ptr<const std::string*>();
        if (!text)
            return std::nullopt;
        found.emplace(key, *text);
    }
    return found;
}

} // namespace

std::optional<RemoteConfigValues> remoteConfigValuesIn(std::string_view text) {
    return valuesIn(json::parse(text, nullptr, false));
}

RemoteConfigStore::RemoteConfigStore(std::string path) : m_path(std::move(path)) {
    if (!m_path.empty())
        load();
}

void RemoteConfigStore::load() {
    const auto text = readSmallFile(m_path, largestFile);
    if (!text)
        return;
    const json content = json::parse(*text, nullptr, false);
    auto values = valuesIn(content);
    const auto time = content.find(timeKey);
    if (!values || time == content.end() || !time->is_number_integer() || *time < 0 || *time > latestTime)
        return debugLog("The remote configuration in " + m_path + " is damaged and counts as absent.");
    m_values = std::move(*values);
    m_fetchTime = Time(Milliseconds(time->get<std::int64_t>()));
}

void RemoteConfigStore::replace(RemoteConfigValues values, Time fetchTime) {
    m_values = std::move(values);
    m_fetchTime = std::chrono::floor<Milliseconds>(fetchTime);
    if (m_path.empty())
        return;
    const json content{{valuesKey, m_values}, {timeKey, m_fetchTime->time_since_epoch() / Milliseconds(1)}};
    m_disk.async([path = m_path, text = content.dump()] {
        if (const auto error = replaceSmallFile(path, text))
            debugLog("The remote configuration can't be stored: " + error->localizedDescription());
    });
}

} // namespace anadrome

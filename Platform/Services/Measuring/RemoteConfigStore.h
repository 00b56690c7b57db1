#pragma once

#include "Platform/Dispatch/DispatchQueue.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace anadrome {

using RemoteConfigValues = std::map<std::string, std::string>;

/// What `{"values": {"key": "string", ...}}` says; nothing for anything else. Further keys beside "values"
/// are passed over.
std::optional<RemoteConfigValues> remoteConfigValuesIn(std::string_view json);

/// The values of the last successful fetch, in memory and in a file, which is read when the store is made and
/// written on a queue of its own. A missing or damaged file holds nothing. One thread.
class RemoteConfigStore {
public:
    using Time = std::chrono::system_clock::time_point;

    /// An empty path has no file.
    explicit RemoteConfigStore(std::string path);

    const RemoteConfigValues& values() const { return m_values; }
    /// To the millisecond; nothing if there was no fetch.
    std::optional<Time> fetchTime() const { return m_fetchTime; }

    void replace(RemoteConfigValues values, Time fetchTime);

private:
    void load();

    const std::string m_path;
    const DispatchQueue m_disk = DispatchQueue::serial("remote-config");
    RemoteConfigValues m_values;
    std::optional<Time> m_fetchTime;
};

} // namespace anadrome

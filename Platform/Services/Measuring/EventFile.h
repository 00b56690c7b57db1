#pragma once

#include "Platform/Foundation/FileDescriptor.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace anadrome {

/// One use of the program, as it waits to be sent.
struct StoredEvent {
    /// Tells events apart, on this machine only.
    std::string id;
    std::string name;
    /// UTC, ISO 8601, to the second.
    std::string time;
};

/// Events in a file, oldest first, one line each. Several processes may use it at once. What a crash or a
/// full disk tore off is passed over; a file that is nothing like one is moved aside to "<name>.damaged". One
/// call at a time.
class EventFile {
public:
    static constexpr std::size_t capacity = 1000;

    /// The file and its folder are made when the first event comes.
    explicit EventFile(std::string path) : m_path(std::move(path)) {}

    /// When this returns true, the event outlives the process. The oldest events make room for it. Its texts
    /// are meant to be short, a hundred bytes or so.
    bool append(const StoredEvent& event) const;

    /// At most `count` of the oldest.
    std::vector<StoredEvent> first(std::size_t count) const;

    /// False if the file can't be written; it then holds what it held.
    bool remove(const std::set<std::string>& ids) const;

private:
    FileDescriptor locked() const;
    /// Empty if there is no file; nothing if it can't be read.
    std::optional<std::string> content() const;

    std::string m_path;
};

} // namespace anadrome

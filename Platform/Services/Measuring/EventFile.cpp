#include "Platform/Services/Measuring/EventFile.h"

#include "Platform/Foundation/FileLock.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/SmallFile.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserFolders.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome {

namespace {

using nlohmann::json;

/// Bytes; more than full capacity takes.
constexpr std::size_t largestFile = 1024 * 1024;

std::string lineOf(const StoredEvent& event) {
    const json line{{"id", event.id}, {"name", event.name}, {"time", event.time}};
    return line.dump(-1, ' ', false, json::error_handler_t::replace) + '\n';
}

std::optional<StoredEvent> eventIn(std::string_view line) {
    const json content = json::parse(line, nullptr, false);
    // Gives the end for everything but an object.
    const auto text = [&content](const char* key) -> const std::string* {
        const auto found = content.find(key);
        return found == content.end() ? nullptr : found->get_ptr<const std::string*>();
    };
    const std::string *id = text("id"), *name = text("name"), *time = text("time");
    return id && name && time ? std::optional(StoredEvent{*id, *name, *time}) : std::nullopt;
}

/// A last line without an end was torn off.
std::vector<StoredEvent> eventsIn(std::string_view text) {
    std::vector<StoredEvent> events;
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        if (auto event = eventIn(text.substr(0, end)))
            events.push_back(std::move(*event));
        text.remove_prefix(end + 1);
    }
    return events;
}

std::string textOf(std::span<const StoredEvent> events) {
    std::string text;
    for (const StoredEvent& event : events)
        text += lineOf(event);
    return text;
}

/// Adds the text, or nothing of it.
bool appendText(const std::string& path, std::string_view text) {
    const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600));
    struct stat before {};
    if (!file || ::fstat(file.get(), &before) != 0)
        return false;
    if (::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()))
        return true;
    // What stays of it where even this fails is passed over.
    if (::ftruncate(file.get(), before.st_size) != 0)
        debugLog("An event was torn off in " + path + ".");
    return false;
}

} // namespace

FileDescriptor EventFile::locked() const {
    return openLocked(m_path + ".lock", O_CREAT, true);
}

std::optional<std::string> EventFile::content() const {
    const auto text = readSmallFile(m_path, largestFile);
    if (text)
        return *text;
    switch (text.error().underlying() ? text.error().underlying()->code() : EIO) {
    case ENOENT:
        return "";
    case EFBIG:
    case EINVAL:
        debugLog("The events in " + m_path + " can't be understood and count as absent.");
        return std::rename(m_path.c_str(), (m_path + ".damaged").c_str()) == 0 ? std::optional("")
                                                                               : std::nullopt;
    default:
        return std::nullopt;
    }
}

bool EventFile::append(const StoredEvent& event) const {
    makePrivateFolders(URL::fileURLWithPath(m_path).deletingLastPathComponent().path());
    const FileDescriptor lock = locked();
    const auto text = lock ? content() : std::nullopt;
    if (!text)
        return false;
    if (static_cast<std::size_t>(std::ranges::count(*text, '\n')) < capacity) {
        const bool isTorn = !text->empty() && text->back() != '\n';
        return appendText(m_path, std::string(isTorn ? "\n" : "").append(lineOf(event)));
    }
    std::vector<StoredEvent> events = eventsIn(*text);
    events.push_back(event);
    const std::size_t kept = std::min(events.size(), capacity);
    return !replaceSmallFile(m_path, textOf(std::span(events).last(kept)));
}

std::vector<StoredEvent> EventFile::first(std::size_t count) const {
    const FileDescriptor lock = locked();
    std::vector<StoredEvent> events = eventsIn(lock ? content().value_or("") : "");
    events.resize(std::min(events.size(), count));
    return events;
}

bool EventFile::remove(const std::set<std::string>& ids) const {
    const FileDescriptor lock = locked();
    const auto text = lock ? content() : std::nullopt;
    if (!text)
        return false;
    std::vector<StoredEvent> events = eventsIn(*text);
    std::erase_if(events, [&ids](const StoredEvent& event) { return ids.contains(event.id); });
    // Nothing is written where nothing stays: that succeeds on a full disk too.
    if (events.empty())
        return ::unlink(m_path.c_str()) == 0 || errno == ENOENT;
    return !replaceSmallFile(m_path, textOf(events));
}

} // namespace anadrome

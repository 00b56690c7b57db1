#include "Platform/Services/Measuring/AnalyticsQueue.h"

#include "Platform/Foundation/FileLock.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/Services/Measuring/InstallIdentifier.h"
#include "Platform/Services/Measuring/UtcTime.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <utility>

namespace anadrome {

namespace {

/// Bytes. The program's own names are much shorter.
constexpr std::size_t longestName = 100;

/// Whether the server says that it would never take the batch. Others may be mended on its side.
bool isRefusal(const NSError& error) {
    constexpr std::array refusals{400L, 413L, 422L};
    const NSError* status = error.underlying();
    return status && status->domain() == HTTPStatusDomain &&
           std::ranges::find(refusals, status->code()) != refusals.end();
}

} // namespace

/// Held by one process at a time, through its lock.
struct AnalyticsQueue::Batch {
    FileDescriptor lock;
    std::vector<StoredEvent> events;
    std::string install;
    /// False if another process is sending, or the disk can't be written.
    bool isReady = false;
};

AnalyticsQueue::AnalyticsQueue(std::string endpoint, std::string folder, ServiceWorld world)
    : m_endpoint(std::move(endpoint)), m_folder(std::move(folder)), m_file(m_folder + "/events"),
      m_world(std::move(world)) {}

void AnalyticsQueue::start() {
    m_isPlanned = true;
    prepareBatch({});
}

void AnalyticsQueue::record(const std::string& name) {
    StoredEvent event{NSProcessInfo::processInfo().globallyUniqueString(), name.substr(0, longestName),
                      utcText(m_world.now()).data()};
    m_disk.async([self = shared_from_this(), event = std::move(event)] {
        if (!self->m_file.append(event))
            return debugLog("The event " + event.name + " can't be kept.");
        DispatchQueue::main().async([self] {
            if (!self->m_isPlanned)
                self->sendAfter(gatheringTime);
        });
    });
}

void AnalyticsQueue::sendAfter(std::chrono::seconds delay) {
    m_isPlanned = true;
    m_world.later(delay, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->prepareBatch({});
    });
}

void AnalyticsQueue::prepareBatch(FileDescriptor lock) {
    const auto batch = std::make_shared<Batch>();
    batch->lock = std::move(lock);
    m_disk.async([self = shared_from_this(), batch, sent = m_sent] {
        batch->isReady = self->fill(*batch, sent);
        DispatchQueue::main().async([self, batch] { self->send(batch); });
    });
}

bool AnalyticsQueue::fill(Batch& batch, const std::set<std::string>& sent) const {
    makePrivateFolders(m_folder);
    if (!batch.lock)
        batch.lock = openLocked(m_folder + "/events.sending", O_CREAT, false);
    if (!batch.lock || (!sent.empty() && !m_file.remove(sent)))
        return false;
    batch.events = m_file.first(batchSize);
    if (!batch.events.empty())
        batch.install = installIdentifier(m_folder + "/install");
    return batch.events.empty() || !batch.install.empty();
}

void AnalyticsQueue::send(const std::shared_ptr<Batch>& batch) {
    if (!batch->isReady)
        return retryLater(*batch);
    m_sent.clear();
    if (!batch->events.empty())
        return m_world.send({.address = m_endpoint, .body = bodyOf(*batch)},
                            [self = shared_from_this(), batch](const Result<std::string>& answer) {
                                self->finish(*batch, answer);
                            });
    m_wait = shortestWait;
    m_isPlanned = false;
}

std::string AnalyticsQueue::bodyOf(const Batch& batch) {
    using nlohmann::json;
    json events = json::array();
    for (const StoredEvent& event : batch.events)
        events.push_back({{"name", event.name}, {"time", event.time}});
    return json{{"install", batch.install}, {"version", ANADROME_VERSION}, {"events", std::move(events)}}
        .dump();
}

void AnalyticsQueue::finish(Batch& batch, const Result<std::string>& answer) {
    if (!answer)
        debugLog("Events weren't taken: " + answer.error().localizedDescription());
    if (!answer && !isRefusal(answer.error()))
        return retryLater(batch);
    for (const StoredEvent& event : batch.events)
        m_sent.insert(event.id);
    m_wait = shortestWait;
    // The lock stays ours until these events have gone from the file.
    prepareBatch(std::move(batch.lock));
}

void AnalyticsQueue::retryLater(Batch& batch) {
    batch.lock = {};
    sendAfter(m_wait);
    m_wait = std::min(m_wait * 2, longestWait);
}

} // namespace anadrome

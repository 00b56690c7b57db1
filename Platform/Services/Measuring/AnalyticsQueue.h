#pragma once

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Services/Measuring/EventFile.h"
#include "Platform/Services/Measuring/ServiceWorld.h"

#include <chrono>
#include <memory>
#include <set>
#include <string>

namespace anadrome {

/// Keeps events on disk until the server has them, and sends them in batches: each event's name and time, an
/// identifier of this installation and the program's version. An event whose batch the server took arrives
/// once; one whose answer got lost may arrive twice. Main thread only; files are used on a queue of its own.
class AnalyticsQueue : public std::enable_shared_from_this<AnalyticsQueue> {
public:
    static constexpr std::size_t batchSize = 100;
    /// From an event to its sending, so that those that follow go along.
    static constexpr std::chrono::seconds gatheringTime{5};
    /// After a failure; each further one doubles the wait.
    static constexpr std::chrono::seconds shortestWait{10};
    static constexpr std::chrono::seconds longestWait{3600};

    /// The folder is the program's own in the user's state folder.
    AnalyticsQueue(std::string endpoint, std::string folder, ServiceWorld world);

    /// Sends what an earlier run has left.
    void start();

    void record(const std::string& name);

private:
    struct Batch;

    void sendAfter(std::chrono::seconds delay);
    void prepareBatch(FileDescriptor lock);
    /// On the disk's queue.
    bool fill(Batch& batch, const std::set<std::string>& sent) const;
    void send(const std::shared_ptr<Batch>& batch);
    static std::string bodyOf(const Batch& batch);
    void finish(Batch& batch, const Result<std::string>& answer);
    void retryLater(Batch& batch);

    const std::string m_endpoint;
    const std::string m_folder;
    const EventFile m_file;
    const ServiceWorld m_world;
    const DispatchQueue m_disk = DispatchQueue::serial("analytics");
    /// A batch is being prepared or sent, or a time for that is set.
    bool m_isPlanned = false;
    std::chrono::seconds m_wait = shortestWait;
    /// What the server has, but may still be in the file.
    std::set<std::string> m_sent;
};

} // namespace anadrome

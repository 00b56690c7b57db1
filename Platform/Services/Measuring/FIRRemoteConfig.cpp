#include "Platform/Services/Measuring/FIRRemoteConfig.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/ServiceStateFolder.h"

#include <algorithm>
#include <utility>

namespace anadrome {

namespace {

using Status = FIRRemoteConfigFetchAndActivateStatus;

std::string storePath() {
    const std::string folder = serviceStateFolder();
    return folder.empty() ? "" : folder + "/remote-config.json";
}

/// What the caller's number of seconds means; a day at most, and not a number means none.
std::chrono::milliseconds timeoutOf(double seconds) {
    constexpr double longest = 86'400;
    return std::chrono::milliseconds(seconds > 0 ? static_cast<long>(std::min(seconds, longest) * 1000) : 0);
}

NSError failure(std::string reason, std::optional<NSError> cause = std::nullopt) {
    return {FIRRemoteConfigErrorDomain, FIRRemoteConfigErrorInternalError, std::move(reason),
            std::move(cause)};
}

} // namespace

std::shared_ptr<FIRRemoteConfig> FIRRemoteConfig::remoteConfig() {
    static const auto instance = std::make_shared<FIRRemoteConfig>(Deployment::current().remoteConfigEndpoint,
                                                                   storePath(), ServiceWorld::real());
    return instance;
}

FIRRemoteConfig::FIRRemoteConfig(std::string endpoint, std::string path, ServiceWorld world)
    : m_endpoint(std::move(endpoint)), m_world(std::move(world)), m_store(std::move(path)) {}

void FIRRemoteConfig::fetchAndActivateWithCompletionHandler(Completion completion) {
    m_waiting.push_back(std::move(completion));
    if (m_waiting.size() > 1)
        return;
    if (m_endpoint.empty())
        complete(Status::error, failure("No remote configuration server is configured."));
    else if (isRecent())
        complete(Status::successUsingPreFetchedData, std::nullopt);
    else
        ask();
}

bool FIRRemoteConfig::isRecent() const {
    if (!m_store.fetchTime())
        return false;
    const std::chrono::duration<double> age = m_world.now() - *m_store.fetchTime();
    // A clock that was set back mustn't keep the values for ever.
    return age.count() >= 0 && age.count() < m_settings.minimumFetchInterval;
}

void FIRRemoteConfig::ask() {
    m_world.send({.address = m_endpoint, .body = "", .timeout = timeoutOf(m_settings.fetchTimeout)},
                 [self = shared_from_this()](const Result<std::string>& answer) { self->finish(answer); });
}

void FIRRemoteConfig::finish(const Result<std::string>& answer) {
    if (!answer)
        return complete(Status::error, failure(answer.error().localizedDescription(), answer.error()));
    auto values = remoteConfigValuesIn(*answer);
    if (!values)
        return complete(Status::error, failure("The remote configuration server's answer isn't valid."));
    m_store.replace(std::move(*values), m_world.now());
    complete(Status::successFetchedFromRemote, std::nullopt);
}

void FIRRemoteConfig::complete(Status status, const std::optional<NSError>& error) {
    DispatchQueue::main().async([waiting = std::exchange(m_waiting, {}), status, error] {
        for (const Completion& completion : waiting)
            if (completion)
                completion(status, error);
    });
}

FIRRemoteConfigValue FIRRemoteConfig::configValueForKey(const std::string& key) const {
    const auto found = m_store.values().find(key);
    if (found == m_store.values().end())
        return {};
    return {found->second, FIRRemoteConfigSource::remote};
}

} // namespace anadrome

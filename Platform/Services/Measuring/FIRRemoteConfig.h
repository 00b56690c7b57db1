#pragma once

#include "Platform/Foundation/NSError.h"
#include "Platform/Services/Measuring/RemoteConfigStore.h"
#include "Platform/Services/Measuring/ServiceWorld.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace anadrome {

inline constexpr const char* FIRRemoteConfigErrorDomain = "FIRRemoteConfigErrorDomain";

/// Codes of FIRRemoteConfigErrorDomain.
enum FIRRemoteConfigErrorCode : long { FIRRemoteConfigErrorInternalError = 8003 };

enum class FIRRemoteConfigFetchAndActivateStatus {
    successFetchedFromRemote = 0,
    /// The values that were there are recent enough.
    successUsingPreFetchedData = 1,
    error = 2,
};

/// In seconds.
struct FIRRemoteConfigSettings {
    /// How long values that came from the server stay in use before it is asked again.
    double minimumFetchInterval = 43'200;
    double fetchTimeout = 60;
};

/// Where a value comes from.
enum class FIRRemoteConfigSource { remote = 0, staticValue = 2 };

struct FIRRemoteConfigValue {
    /// Empty if the server gave none.
    std::string stringValue;
    FIRRemoteConfigSource source = FIRRemoteConfigSource::staticValue;
};

/// Values that the deployer changes from afar. They are kept in the user's state folder, and hold until a
/// later fetch succeeds. Main thread only.
class FIRRemoteConfig : public std::enable_shared_from_this<FIRRemoteConfig> {
public:
    /// `error` is present if, and only if, the status is one.
    using Completion = std::function<void(FIRRemoteConfigFetchAndActivateStatus status,
                                          const std::optional<NSError>& error)>;

    /// The program's one, made at the first call, with the deployment's server.
    static std::shared_ptr<FIRRemoteConfig> remoteConfig();

    /// An empty endpoint is none; an empty path keeps nothing from run to run.
    FIRRemoteConfig(std::string endpoint, std::string path, ServiceWorld world);

    void setConfigSettings(const FIRRemoteConfigSettings& settings) { m_settings = settings; }

    /// Asks the server, unless it was asked with success within the minimum interval, and puts its values in
    /// the place of those before. A failure changes none. Completes once, on the main queue, never before the
    /// call returns; calls that come while the server is being asked share its answer.
    void fetchAndActivateWithCompletionHandler(Completion completion);

    FIRRemoteConfigValue configValueForKey(const std::string& key) const;

private:
    bool isRecent() const;
    void ask();
    void finish(const Result<std::string>& answer);
    void complete(FIRRemoteConfigFetchAndActivateStatus status, const std::optional<NSError>& error);

    const std::string m_endpoint;
    const ServiceWorld m_world;
    RemoteConfigStore m_store;
    FIRRemoteConfigSettings m_settings;
    /// Of the calls that share the request under way.
    std::vector<Completion> m_waiting;
};

} // namespace anadrome

#include "App/RemoteConfigClient.h"

#include "Platform/Services/Measuring/FIRRemoteConfig.h"

namespace anadrome {

RemoteConfigClient& RemoteConfigClient::shared() {
    static RemoteConfigClient instance;
    return instance;
}

RemoteConfigClient::RemoteConfigClient() : m_remoteConfig(FIRRemoteConfig::remoteConfig()) {
    m_remoteConfig->setConfigSettings(FIRRemoteConfigSettings());
}

} // namespace anadrome

#include "App/AppDelegate.h"

#include "App/RemoteConfigClient.h"
#include "Platform/AVFoundation/AVAudioSession.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Ads/ALPrivacySettings.h"
#include "Platform/Services/Measuring/FIRApp.h"
#include "Platform/Services/Measuring/FIRRemoteConfig.h"
#include "Platform/Services/ServiceLines.h"

namespace anadrome {

bool AppDelegate::didFinishLaunchingWithOptions(UIApplication&, const Dictionary&) {
    // First of all: what follows counts and asks through it.
    FIRApp::configure();
    // Whatever the user's answer to the consent form is or will be.
    ALPrivacySettings::setHasUserConsent(true);
    ALPrivacySettings::setDoNotSell(true);
    registerPreferences();
    fetchRemoteConfig();
    prepareSound();
    return true;
}

UISceneConfiguration AppDelegate::configurationForConnectingSceneSession(UIApplication&,
                                                                         const UISceneSession& session) {
    return {"Default Configuration", session.role};
}

void AppDelegate::registerPreferences() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.registerDefaults({{"resolutionIndexKey", 1}});
    // A file that somebody edited mustn't name a preset that doesn't exist.
    preferences.limitStoredInteger("resolutionIndexKey", 0, 2);
}

void AppDelegate::fetchRemoteConfig() {
    RemoteConfigClient::shared().remoteConfig()->fetchAndActivateWithCompletionHandler(
        [](FIRRemoteConfigFetchAndActivateStatus, const std::optional<NSError>& error) {
            printServiceLine(OutsideService::remoteConfiguration,
                             error ? error->localizedDescription()
                                   : "Remote config successfully fetched & activated!");
        });
}

void AppDelegate::prepareSound() {
    if (const auto error = AVAudioSession::sharedInstance().setCategory(AVAudioSessionCategoryPlayback))
        print(error->description());
}

} // namespace anadrome

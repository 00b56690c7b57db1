#include "Platform/AVFoundation/Capture/AVCaptureDevice.h"

#include "Platform/AVFoundation/Capture/V4L2Cameras.h"

#include <mutex>

namespace anadrome {

namespace {

std::mutex discoveryMutex;

std::function<AVCaptureDevices()>& discoveryInUse() {
    static std::function<AVCaptureDevices()> discovery;
    return discovery;
}

AVCaptureDevices devicesOfThisMachine() {
    // In pieces of a fiftieth of a second: by themselves they would be as long as two.
    const AVCaptureDevice soundServer{
        "", "pulse", "default", {{"name", "Anadrome"}, {"fragment_size", "3840"}}};
    const AVCaptureDevice soundCard{"", "alsa", "default", {}};
    return {capture::v4l2Cameras(), {soundServer, soundCard}};
}

} // namespace

AVCaptureDevices discoverCaptureDevices() {
    const auto discovery = [] {
        const std::lock_guard lock(discoveryMutex);
        return discoveryInUse();
    }();
    return discovery ? discovery() : devicesOfThisMachine();
}

void setCaptureDiscovery(std::function<AVCaptureDevices()> discovery) {
    const std::lock_guard lock(discoveryMutex);
    discoveryInUse() = std::move(discovery);
}

} // namespace anadrome

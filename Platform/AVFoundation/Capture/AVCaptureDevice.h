#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace anadrome {

/// What pictures or sound are captured from, as the device library knows it. Its samples' times must be those
/// of the wall clock, so that devices can be put in step.
struct AVCaptureDevice {
    /// What its maker calls it.
    std::string localizedName;
    /// The library's name of the kind of device, its address there, and how it is to be set up.
    std::string format;
    std::string address;
    std::map<std::string, std::string> options;
};

struct AVCaptureDevices {
    std::vector<AVCaptureDevice> cameras;
    /// Ways to the user's sound input: the first that can be opened is the one.
    std::vector<AVCaptureDevice> soundInputs;
};

/// The devices of this machine as it is now, each camera in its best mode. Any thread; may block for as long
/// as a driver takes to answer.
AVCaptureDevices discoverCaptureDevices();

/// Has other devices found from now on, such as generated ones where there is no camera; the machine's own
/// with an empty function, which is the default. Any thread, and called on any.
void setCaptureDiscovery(std::function<AVCaptureDevices()> discovery);

} // namespace anadrome

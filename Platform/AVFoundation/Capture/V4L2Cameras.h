#pragma once

#include "Platform/AVFoundation/Capture/AVCaptureDevice.h"

namespace anadrome::capture {

/// The cameras that the kernel has and this user may open, in the order of their numbers. May block in a
/// driver.
std::vector<AVCaptureDevice> v4l2Cameras();

} // namespace anadrome::capture

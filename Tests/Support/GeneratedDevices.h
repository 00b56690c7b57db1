#pragma once

#include "Platform/AVFoundation/Capture/AVCaptureDevice.h"

#include <string>

/// A camera and a microphone for machines that have none, made by the device library in the pace of a real
/// one. Picture and sound show the same clock: white and a tone for the first fifth of each second, black and
/// silence for the rest. They end after that many seconds.
namespace anadrome::testing_support {

inline AVCaptureDevice generatedCamera(const std::string& size = "160x120", double seconds = 3600) {
    return {"Generated camera",
            "lavfi",
            "color=black:rate=30:size=" + size + ":duration=" + std::to_string(seconds) +
                ",realtime,settb=AVTB,setpts=RTCSTART+N*1000000/30,"
                "geq=lum='if(lt(mod(T,1),0.2),235,16)':cb=128:cr=128,format=yuyv422",
            {}};
}

inline AVCaptureDevice generatedMicrophone(double seconds = 3600) {
    return {"Generated microphone",
            "lavfi",
            "sine=frequency=440:sample_rate=48000:duration=" + std::to_string(seconds) +
                ",arealtime,asettb=AVTB,asetpts=RTCSTART+N*1000000/48000,"
                "volume='lt(mod(t,1),0.2)':eval=frame",
            {}};
}

} // namespace anadrome::testing_support

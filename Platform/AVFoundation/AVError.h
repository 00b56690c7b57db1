#pragma once

#include "Platform/Foundation/NSError.h"

#include <optional>
#include <string>

namespace anadrome {

inline constexpr const char* AVFoundationErrorDomain = "AVFoundationErrorDomain";

enum AVErrorCode : long {
    AVErrorUnknown = -11800,
    AVErrorOutOfMemory = -11801,
    AVErrorNoDataCaptured = -11805,
    AVErrorDiskFull = -11807,
    AVErrorDeviceWasDisconnected = -11808,
    AVErrorDeviceNotConnected = -11814,
    AVErrorDeviceInUseByAnotherApplication = -11815,
    AVErrorExportFailed = -11820,
    AVErrorDecodeFailed = -11821,
    AVErrorInvalidSourceMedia = -11822,
    AVErrorFileAlreadyExists = -11823,
    AVErrorInvalidCompositionTrackSegmentDuration = -11825,
    AVErrorFileFormatNotRecognized = -11828,
    AVErrorFileFailedToParse = -11829,
    AVErrorDecoderNotFound = -11833,
    AVErrorEncoderNotFound = -11834,
    AVErrorOperationNotSupportedForAsset = -11838,
    AVErrorInvalidVideoComposition = -11841,
    AVErrorUnsupportedOutputSettings = -11861,
    AVErrorOperationCancelled = -11878,
};

/// An error of AVFoundationErrorDomain with the code's own sentence as description.
NSError makeAVError(AVErrorCode code, std::optional<NSError> underlying = std::nullopt);

} // namespace anadrome

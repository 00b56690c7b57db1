#include "Platform/AVFoundation/AVError.h"

#include "Platform/Foundation/NSBundle.h"

namespace anadrome {

namespace {

const char* sentence(AVErrorCode code) {
    switch (code) {
    case AVErrorOutOfMemory:
        return "There is not enough memory.";
    case AVErrorNoDataCaptured:
        return "Nothing was recorded.";
    case AVErrorDiskFull:
        return "There is not enough space on the disk.";
    case AVErrorDeviceWasDisconnected:
        return "The device has gone.";
    case AVErrorDeviceNotConnected:
        return "The device could not be opened.";
    case AVErrorDeviceInUseByAnotherApplication:
        return "The device is in use by another program.";
    case AVErrorExportFailed:
        return "The movie could not be exported.";
    case AVErrorDecodeFailed:
        return "The media could not be decoded.";
    case AVErrorInvalidSourceMedia:
        return "The source media could not be read.";
    case AVErrorFileAlreadyExists:
        return "A file with this name exists already.";
    case AVErrorInvalidCompositionTrackSegmentDuration:
        return "A part of the movie would have no duration.";
    case AVErrorFileFormatNotRecognized:
        return "The file is not of a known media format.";
    case AVErrorFileFailedToParse:
        return "The file is damaged and could not be read.";
    case AVErrorDecoderNotFound:
        return "There is no decoder for this media.";
    case AVErrorEncoderNotFound:
        return "There is no encoder for these settings.";
    case AVErrorOperationNotSupportedForAsset:
        return "The operation is not supported for this media.";
    case AVErrorInvalidVideoComposition:
        return "The composition of the pictures can’t be shown.";
    case AVErrorUnsupportedOutputSettings:
        return "The output settings are not supported.";
    case AVErrorOperationCancelled: // never shown: the user asked for it
    case AVErrorUnknown:
        break;
    }
    return "The operation could not be completed.";
}

} // namespace

NSError makeAVError(AVErrorCode code, std::optional<NSError> underlying) {
    return NSError(AVFoundationErrorDomain, code, NSLocalizedString(sentence(code)), std::move(underlying));
}

} // namespace anadrome

#include "Platform/AVFoundation/Libav/Errors.h"

#include <cerrno>

extern "C" {
#include <libavutil/error.h>
}

namespace anadrome::libav {

namespace {

AVErrorCode codeFor(int returnValue, AVErrorCode fallback) {
    switch (returnValue) {
    case AVERROR(ENOSPC):
    case AVERROR(EDQUOT):
    case AVERROR(EFBIG):
        return AVErrorDiskFull;
    case AVERROR(ENOMEM):
        return AVErrorOutOfMemory;
    case AVERROR_INVALIDDATA:
        return AVErrorFileFailedToParse;
    default:
        return fallback;
    }
}

} // namespace

NSError errorFrom(int returnValue, AVErrorCode fallback) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(returnValue, text, sizeof text);
    return makeAVError(codeFor(returnValue, fallback), NSError("MediaLibraryErrorDomain", returnValue, text));
}

} // namespace anadrome::libav

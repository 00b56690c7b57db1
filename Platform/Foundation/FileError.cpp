#include "Platform/Foundation/FileError.h"

#include "Platform/Foundation/URL.h"

#include <cerrno>

namespace anadrome {

namespace {

NSCocoaErrorCode readCode(int errnoValue) {
    switch (errnoValue) {
    case ENOENT:
        return NSFileReadNoSuchFileError;
    case EACCES:
    case EPERM:
        return NSFileReadNoPermissionError;
    default:
        return NSFileReadUnknownError;
    }
}

NSCocoaErrorCode writeCode(int errnoValue) {
    switch (errnoValue) {
    case ENOENT:
        return NSFileNoSuchFileError;
    case EACCES:
    case EPERM:
    case EROFS:
        return NSFileWriteNoPermissionError;
    case EEXIST:
        return NSFileWriteFileExistsError;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return NSFileWriteOutOfSpaceError;
    default:
        return NSFileWriteUnknownError;
    }
}

const char* participle(FileAction action) {
    switch (action) {
    case FileAction::read:
        return "read";
    case FileAction::write:
        return "written";
    case FileAction::createFolder:
        return "created";
    case FileAction::remove:
        return "removed";
    }
    return "";
}

} // namespace

NSError fileError(FileAction action, int errnoValue, const std::string& path) {
    const long code = action == FileAction::read ? readCode(errnoValue) : writeCode(errnoValue);
    const NSError cause = NSError::posix(errnoValue);
    return {NSCocoaErrorDomain, code,
            "“" + URL::fileURLWithPath(path).lastPathComponent() + "” couldn’t be " + participle(action) +
                ": " + cause.localizedDescription() + '.',
            cause};
}

} // namespace anadrome

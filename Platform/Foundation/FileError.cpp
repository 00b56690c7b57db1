#include "Platform/Foundation/FileError.h"

#include "Platform/Foundation/NSBundle.h"
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

/// With places for the item's name and for the cause.
const char* sentence(FileAction action) {
    switch (action) {
    case FileAction::read:
        return "“%1” couldn’t be read: %2.";
    case FileAction::write:
        return "“%1” couldn’t be written: %2.";
    case FileAction::createFolder:
        return "“%1” couldn’t be created: %2.";
    case FileAction::remove:
        return "“%1” couldn’t be removed: %2.";
    }
    return "";
}

} // namespace

NSError fileError(FileAction action, int errnoValue, const std::string& path) {
    const long code = action == FileAction::read ? readCode(errnoValue) : writeCode(errnoValue);
    const NSError cause = NSError::posix(errnoValue);
    return {NSCocoaErrorDomain, code,
            NSLocalizedString(sentence(action),
                              {URL::fileURLWithPath(path).lastPathComponent(), cause.localizedDescription()}),
            cause};
}

} // namespace anadrome

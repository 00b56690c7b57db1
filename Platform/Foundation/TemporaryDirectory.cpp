#include "Platform/Foundation/TemporaryDirectory.h"

#include "Platform/Foundation/FileLock.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/RemovalByExec.h"
#include "Platform/Foundation/TemporaryBase.h"

#include <fcntl.h>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <sys/stat.h>

namespace anadrome {

namespace {

struct ProcessFolder {
    std::string path;
    URL work;
    URL shared;
    /// Empty once the folder is removed.
    FileDescriptor lock;
};

struct State {
    std::mutex mutex;
    std::optional<ProcessFolder> folder;
};

/// Never destroyed: the lock is held, and the folder usable, until the process has gone.
State& state() {
    static State& state = *new State;
    return state;
}

void sweepFolder(const std::string& folder) {
    NSFileManager::defaultManager().removeItemAtPath(folder);
    ::unlink(lockPathOf(folder).c_str());
}

/// Removes what dead processes left in the base. Precondition: the sweep lock is held, so that every folder
/// of a living process has its lock.
void sweep(const std::string& base) {
    const auto names = NSFileManager::defaultManager().contentsOfDirectoryAtPath(base);
    if (!names)
        return;
    std::set<std::string> folders;
    for (const std::string& name : *names) {
        const std::string folder = name.ends_with(".lock") ? name.substr(0, name.size() - 5) : name;
        if (isProcessFolderName(folder))
            folders.insert(base + '/' + folder);
    }
    for (const std::string& folder : folders) {
        const FileDescriptor lock = openLocked(lockPathOf(folder), 0, false);
        const bool hasLockFile = ::access(lockPathOf(folder).c_str(), F_OK) == 0;
        if (lock || !hasLockFile)
            sweepFolder(folder);
    }
}

std::optional<ProcessFolder> makeFolderIn(const std::string& base) {
    const FileDescriptor sweepLock = openLocked(base + "/sweep.lock", O_CREAT, true);
    if (!sweepLock)
        return std::nullopt;
    sweep(base);
    const std::string folder = base + '/' + NSProcessInfo::processInfo().globallyUniqueString();
    FileDescriptor lock = openLocked(lockPathOf(folder), O_CREAT | O_EXCL, false);
    if (!lock)
        return std::nullopt;
    const std::string work = folder + "/Work";
    const std::string shared = folder + "/Shared";
    for (const std::string& path : {folder, work, shared})
        if (::mkdir(path.c_str(), 0700) != 0) {
            sweepFolder(folder);
            return std::nullopt;
        }
    return ProcessFolder{folder, URL::fileURLWithPath(work), URL::fileURLWithPath(shared), std::move(lock)};
}

ProcessFolder makeFolder() {
    for (const bool mustBeOnDisk : {true, false}) {
        for (const std::string& base : temporaryBaseCandidates()) {
            if (!prepareTemporaryBase(base) || (mustBeOnDisk && !liesOnDisk(base)))
                continue;
            if (auto folder = makeFolderIn(base))
                return std::move(*folder);
        }
    }
    fatalError("No folder for temporary files can be made, neither in the user's cache nor in /var/tmp.");
}

const ProcessFolder& processFolder() {
    std::lock_guard lock(state().mutex);
    if (!state().folder)
        state().folder = makeFolder();
    return *state().folder;
}

} // namespace

const URL& TemporaryDirectory::current() {
    return processFolder().work;
}

const URL& TemporaryDirectory::shared() {
    return processFolder().shared;
}

bool TemporaryDirectory::contains(const URL& file) {
    return file.path().starts_with(processFolder().path + '/');
}

void TemporaryDirectory::remove() {
    std::lock_guard lock(state().mutex);
    if (!state().folder || !state().folder->lock)
        return;
    sweepFolder(state().folder->path);
    state().folder->lock = {};
}

void TemporaryDirectory::removeByExec(int exitCode, const std::vector<URL>& alsoRemove) {
    RemovalOrder order{exitCode, {}, {}};
    {
        std::lock_guard lock(state().mutex);
        if (state().folder && state().folder->lock)
            order.folder = state().folder->path;
    }
    for (const URL& url : alsoRemove)
        order.files.push_back(url.path());
    execToCarryOut(order);
    carryOut(order);
    ::_exit(exitCode);
}

void TemporaryDirectory::finishRemovalIfAsked(int argc, char** argv) {
    carryOutInheritedOrder(argc, argv);
}

} // namespace anadrome

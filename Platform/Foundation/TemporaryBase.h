#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace anadrome {

/// Where the folders of TemporaryDirectory lie: "<base>/<unique string>" and beside it "<unique
/// string>.lock".

/// The places that may be the base, best first, whether they exist or not.
std::vector<std::string> temporaryBaseCandidates();

/// Makes the base if it is missing. True if it is a folder of this user that can be written: in a place where
/// others can write too, also no link and closed to them.
bool prepareTemporaryBase(const std::string& base);

/// False for a file system that keeps its files in memory.
bool liesOnDisk(const std::string& path);

/// Whether a file name has the form of NSProcessInfo's globallyUniqueString(). Sweeps touch nothing else.
bool isProcessFolderName(std::string_view name);

inline std::string lockPathOf(const std::string& folder) {
    return folder + ".lock";
}

} // namespace anadrome

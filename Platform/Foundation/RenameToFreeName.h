#pragma once

#include "Platform/Foundation/URL.h"

namespace anadrome {

/// Gives a file a name that no file has. 0 or the system's error number; EEXIST if the name is taken. Where
/// the file system can't promise to replace nothing, the file has both names afterwards, and the old one is
/// left to be dropped.
int renameToFreeName(const URL& from, const URL& to);

} // namespace anadrome

#pragma once

#include <string>

namespace anadrome {

/// Absolute paths of the user's folders, whether they exist or not; empty if the user has no home. Any
/// thread.

/// For files that can be made anew: $XDG_CACHE_HOME, else ~/.cache.
std::string userCacheFolder();

/// For what the user has chosen: $XDG_CONFIG_HOME, else ~/.config.
std::string userConfigurationFolder();

/// For what the program remembers by itself: $XDG_STATE_HOME, else ~/.local/state.
std::string userStateFolder();

/// For movies: what user-dirs.dirs in the configuration folder names, else ~/Videos.
std::string userVideosFolder();

/// Makes a folder, and those above it that are missing, for this user alone. Existing ones stay as they are.
void makePrivateFolders(const std::string& path);

} // namespace anadrome

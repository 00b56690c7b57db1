#include "Platform/Foundation/UserFolders.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome {

namespace {

/// Of an environment variable; empty unless it holds an absolute path.
std::string absolutePathIn(const char* variable) {
    const char* value = std::getenv(variable);
    return value && value[0] == '/' ? value : "";
}

std::string homeFolder() {
    const std::string home = absolutePathIn("HOME");
    if (!home.empty())
        return home;
    struct passwd entry {};
    struct passwd* found = nullptr;
    char text[4096];
    return ::getpwuid_r(::geteuid(), &entry, text, sizeof text, &found) == 0 && found ? found->pw_dir : "";
}

std::string userFolder(const char* variable, const char* nameInHome) {
    const std::string folder = absolutePathIn(variable);
    if (!folder.empty())
        return folder;
    const std::string home = homeFolder();
    return home.empty() ? "" : home + '/' + nameInHome;
}

} // namespace

std::string userCacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

std::string userConfigurationFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

void makePrivateFolders(const std::string& path) {
    if (::mkdir(path.c_str(), 0700) == 0 || errno != ENOENT)
        return;
    const std::size_t slash = path.rfind('/');
    if (slash == 0 || slash == path.npos)
        return;
    makePrivateFolders(path.substr(0, slash));
    ::mkdir(path.c_str(), 0700);
}

} // namespace anadrome

#include "Platform/Foundation/UserFolders.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
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

/// The folder in a line like XDG_VIDEOS_DIR="$HOME/Films", which is absolute or in the home; else empty.
std::string folderInLine(const std::string& line, const std::string& variable) {
    const std::size_t start = line.find_first_not_of(" \t");
    const std::string opening = variable + "=\"";
    if (start == line.npos || line.compare(start, opening.size(), opening) != 0)
        return "";
    std::string folder;
    for (std::size_t i = start + opening.size(); i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size())
            ++i;
        folder += line[i];
    }
    const std::string home = "$HOME";
    if (folder.starts_with(home + '/'))
        folder.replace(0, home.size(), homeFolder());
    return folder.starts_with('/') ? folder : "";
}

} // namespace

std::string userCacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

std::string userConfigurationFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

std::string userStateFolder() {
    return userFolder("XDG_STATE_HOME", ".local/state");
}

std::string userVideosFolder() {
    std::string folder = homeFolder().empty() ? "" : homeFolder() + "/Videos";
    std::ifstream file(userConfigurationFolder() + "/user-dirs.dirs");
    for (std::string line; std::getline(file, line);)
        if (const std::string named = folderInLine(line, "XDG_VIDEOS_DIR"); !named.empty())
            folder = named;
    return folder;
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

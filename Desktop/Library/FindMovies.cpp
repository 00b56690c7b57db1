#include "Desktop/Library/FindMovies.h"

#include "Platform/UniformTypeIdentifiers/UTType.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <tuple>

namespace anadrome::desktop {

namespace fs = std::filesystem;

namespace {

constexpr int mostLevels = 8;
constexpr int mostEntries = 200'000;

/// A walk through folders, level by level: so if it has to end early, the nearest are there.
class Walk {
public:
    Walk(const URL& folder, std::stop_token stop) : m_stop(std::move(stop)) {
        struct stat status {};
        if (::stat(folder.path().c_str(), &status) == 0)
            lookAt(folder, status, 0);
    }

    std::vector<FoundMovie> movies() {
        while (!m_folders.empty() && !isOver()) {
            const Folder folder = std::move(m_folders.front());
            m_folders.pop_front();
            readFolder(folder);
        }
        return m_stop.stop_requested() ? std::vector<FoundMovie>() : std::move(m_movies);
    }

private:
    struct Folder {
        URL url;
        int level;
    };

    bool isOver() const { return m_stop.stop_requested() || m_entries >= mostEntries; }

    void readFolder(const Folder& folder) {
        std::error_code failure;
        for (fs::directory_iterator entry(folder.url.path(), failure), end; !failure && entry != end;
             entry.increment(failure)) {
            const std::string name = entry->path().filename().string();
            struct stat status {};
            ++m_entries;
            if (isOver())
                return;
            if (!name.starts_with('.') && ::stat(entry->path().c_str(), &status) == 0)
                lookAt(folder.url.appendingPathComponent(name), status, folder.level + 1);
        }
    }

    void lookAt(const URL& url, const struct stat& status, int level) {
        if (S_ISDIR(status.st_mode)) {
            if (level <= mostLevels && m_known.insert({status.st_dev, status.st_ino}).second)
                m_folders.push_back({url, level});
        } else if (S_ISREG(status.st_mode) && fileConformsToType(url, kUTTypeMovie)) {
            m_movies.push_back({url, status.st_mtim.tv_sec});
        }
    }

    const std::stop_token m_stop;
    int m_entries = 0;
    std::deque<Folder> m_folders;
    std::set<std::pair<dev_t, ino_t>> m_known;
    std::vector<FoundMovie> m_movies;
};

} // namespace

std::vector<FoundMovie> findMovies(const URL& folder, const std::stop_token& stop) {
    std::vector<FoundMovie> movies = Walk(folder, stop).movies();
    std::ranges::sort(movies, [](const FoundMovie& one, const FoundMovie& other) {
        return std::tie(other.modified, one.file.path()) < std::tie(one.modified, other.file.path());
    });
    return movies;
}

} // namespace anadrome::desktop

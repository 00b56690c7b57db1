#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace anadrome::testing_support {

/// A new folder for a test's files; it goes away with its owner.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string name = parent / "anadrome-test-XXXXXX";
        if (!mkdtemp(name.data()))
            throw std::runtime_error("cannot make a folder for a test");
        path_ = name;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

} // namespace anadrome::testing_support

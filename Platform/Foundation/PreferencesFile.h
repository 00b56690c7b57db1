#pragma once

#include "Platform/Foundation/NSDictionary.h"

#include <map>
#include <optional>
#include <string>

namespace anadrome {

/// New values by their keys; an empty one removes the key.
using PreferenceChanges = std::map<std::string, std::optional<Value>>;

/// A settings file in INI form: one line a key, under "[General]", to be read and edited by hand too. Holds
/// Booleans, numbers and strings; a value of another type is dropped. One call at a time.
class PreferencesFile {
public:
    /// The file and its folder needn't exist. A function that is registered with std::atexit() after this may
    /// still read and write.
    explicit PreferencesFile(std::string path);

    /// What the file holds. A missing file holds nothing. Neither does one that is damaged or can't be read:
    /// a debug line tells of it, and it is moved aside to "<name>.damaged", out of the next write's way.
    Dictionary read() const;

    /// Puts the changes into the file as it is now, with what other processes have written, and gives what it
    /// holds then. The file is replaced in one step: whoever reads it, or finds it after a crash, sees the
    /// old or the new one whole. Nothing, and a debug line, if the file can't be written.
    std::optional<Dictionary> merge(const PreferenceChanges& changes) const;

private:
    /// Nothing if there is something that can't be read or understood.
    std::optional<Dictionary> intactContent() const;

    std::string m_path;
};

} // namespace anadrome

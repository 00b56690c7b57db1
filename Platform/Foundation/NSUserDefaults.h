#pragma once

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/URL.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace anadrome {

/// The user's preferences: values by their key, kept in a settings file. Any thread.
///
/// A set value is seen at once by every reader in this process, and stored soon after on a thread of the
/// global pool, with or without an event loop, at the latest when the program ends by exit() or by leaving
/// main(). Processes may share a file: each stores only the keys that it set itself, and sees what others
/// have stored when it starts and whenever it stores something. A value that can't be stored stays visible in
/// this process and is tried again with the next one. A debug line tells of that, as of a damaged file, which
/// counts as empty.
///
/// A key is searched among the set and stored values, then among the registered defaults. Keys are words
/// without slashes.
class NSUserDefaults {
public:
    /// The preferences of the program, in "anadrome/preferences.ini" under $XDG_CONFIG_HOME, else ~/.config;
    /// in memory alone if the user has no home.
    static NSUserDefaults& standardUserDefaults();

    /// Preferences in a file of their own, which needn't exist. What is set on them isn't waited for at the
    /// program's end.
    explicit NSUserDefaults(const URL& file);

    /// 0 if there is no value. A floating-point number loses its fraction, a Boolean is 1 or 0, a string the
    /// number it begins with, or 0.
    std::int64_t integerForKey(const std::string& key) const;
    /// False if there is no value. True for numbers other than 0 and for the strings "YES", "1" and "true".
    bool boolForKey(const std::string& key) const;
    /// Nothing if there is no value. A number becomes text, a Boolean "1" or "0".
    std::optional<std::string> stringForKey(const std::string& key) const;

    void setInteger(std::int64_t value, const std::string& key);
    void setBool(bool value, const std::string& key);
    void setString(std::string value, const std::string& key);
    /// Reveals the registered default, if there is one.
    void removeObjectForKey(const std::string& key);

    /// Adds values, or replaces registered ones, that count where none is stored, a stored 0 included. They
    /// are never stored: every start of the program registers them anew.
    void registerDefaults(const Dictionary& defaults);

    /// From now on a stored value that is no whole number from `first` to `last` counts as absent, now and
    /// whenever the file is read again: anybody may edit it. What this process sets isn't checked.
    void limitStoredInteger(const std::string& key, std::int64_t first, std::int64_t last);

    /// Stores what has been set and returns when the file is replaced. False if that failed.
    bool synchronize();

    /// Cuts these preferences off from their file, for a program whose settings are only for this run. What
    /// is stored isn't seen any more, only registered defaults are; what is set from now on lives as long as
    /// the process. To be called once at the program's start; what was set before is stored first.
    void keepInMemory();

private:
    class Domain;

    explicit NSUserDefaults(std::shared_ptr<Domain> domain);
    static NSUserDefaults& makeStandard();

    std::shared_ptr<Domain> m_domain;
};

} // namespace anadrome

#include "Platform/Foundation/NSUserDefaults.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/PreferencesFile.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/Foundation/ValueConversion.h"

#include <cstdlib>
#include <mutex>
#include <utility>

namespace anadrome {

/// The values and their file. A store that waits for its turn keeps the domain alive.
class NSUserDefaults::Domain : public std::enable_shared_from_this<Domain> {
public:
    /// Both ends count.
    struct Range {
        std::int64_t first;
        std::int64_t last;
    };

    explicit Domain(std::optional<PreferencesFile> file)
        : m_file(std::move(file)), m_stored(m_file ? m_file->read() : Dictionary()) {}

    std::optional<Value> value(const std::string& key) const {
        std::lock_guard lock(m_mutex);
        if (const auto change = m_changes.find(key); change != m_changes.end() && change->second)
            return change->second;
        const Value* found = m_changes.contains(key) ? nullptr : find(m_stored, key);
        found = found ? found : find(m_registered, key);
        return found ? std::optional(*found) : std::nullopt;
    }

    void change(const std::string& key, std::optional<Value> value) {
        std::lock_guard lock(m_mutex);
        m_changes.insert_or_assign(key, std::move(value));
        if (m_file && !std::exchange(m_isStoreScheduled, true))
            m_storeQueue.async([self = shared_from_this()] { self->store(); });
    }

    void addDefaults(const Dictionary& defaults) {
        std::lock_guard lock(m_mutex);
        for (const auto& [key, value] : defaults)
            m_registered.insert_or_assign(key, value);
    }

    void limitStored(const std::string& key, Range range) {
        std::lock_guard lock(m_mutex);
        m_ranges.insert_or_assign(key, range);
        dropUnlessInRange(m_stored, key, range);
    }

    bool store() {
        std::lock_guard storing(m_storeMutex);
        const PreferenceChanges changes = takeTask();
        if (changes.empty())
            return true;
        auto content = m_file->merge(changes);
        if (!content)
            return false;
        adopt(std::move(*content), changes);
        return true;
    }

    void detach() {
        store();
        std::scoped_lock lock(m_storeMutex, m_mutex);
        m_file.reset();
        m_stored.clear();
        m_changes.clear();
    }

private:
    /// What there is to store now. Nothing without a file.
    PreferenceChanges takeTask() {
        std::lock_guard lock(m_mutex);
        m_isStoreScheduled = false;
        return m_file ? m_changes : PreferenceChanges();
    }

    static void dropUnlessInRange(Dictionary& content, const std::string& key, Range range) {
        const Value* value = find(content, key);
        const auto number = value ? value->asInteger() : std::nullopt;
        if (value && !(number && *number >= range.first && *number <= range.last))
            content.erase(key);
    }

    /// A key that was set again meanwhile stays to be stored.
    void adopt(Dictionary content, const PreferenceChanges& changes) {
        std::lock_guard lock(m_mutex);
        for (const auto& [key, range] : m_ranges)
            if (!changes.contains(key))
                dropUnlessInRange(content, key, range);
        m_stored = std::move(content);
        std::erase_if(m_changes, [&](const auto& change) {
            const auto stored = changes.find(change.first);
            return stored != changes.end() && stored->second == change.second;
        });
    }

    /// Held while the file is at work; taken before m_mutex.
    std::mutex m_storeMutex;
    /// Changed only under both mutexes.
    std::optional<PreferencesFile> m_file;

    mutable std::mutex m_mutex;
    Dictionary m_stored;
    /// What isn't stored yet; all that was set, if there is no file.
    PreferenceChanges m_changes;
    Dictionary m_registered;
    std::map<std::string, Range> m_ranges;
    bool m_isStoreScheduled = false;
    const DispatchQueue m_storeQueue = DispatchQueue::serial("preferences");
};

namespace {

std::optional<PreferencesFile> standardFile() {
    const std::string folder = userConfigurationFolder();
    if (folder.empty())
        return std::nullopt;
    return PreferencesFile(folder + "/anadrome/preferences.ini");
}

} // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    // Never destroyed: threads of the global pool may ask while the program's statics are torn down.
    static NSUserDefaults& standard = makeStandard();
    return standard;
}

NSUserDefaults& NSUserDefaults::makeStandard() {
    auto& standard = *new NSUserDefaults(std::make_shared<Domain>(standardFile()));
    // Only now that there is a PreferencesFile: it can then still write at the program's end.
    std::atexit([] { standardUserDefaults().synchronize(); });
    return standard;
}

NSUserDefaults::NSUserDefaults(const URL& file)
    : NSUserDefaults(std::make_shared<Domain>(PreferencesFile(file.path()))) {}

NSUserDefaults::NSUserDefaults(std::shared_ptr<Domain> domain) : m_domain(std::move(domain)) {}

std::int64_t NSUserDefaults::integerForKey(const std::string& key) const {
    const auto value = m_domain->value(key);
    return value ? integerOf(*value) : 0;
}

bool NSUserDefaults::boolForKey(const std::string& key) const {
    const auto value = m_domain->value(key);
    return value && boolOf(*value);
}

std::optional<std::string> NSUserDefaults::stringForKey(const std::string& key) const {
    const auto value = m_domain->value(key);
    return value ? stringOf(*value) : std::nullopt;
}

void NSUserDefaults::setInteger(std::int64_t value, const std::string& key) {
    m_domain->change(key, value);
}

void NSUserDefaults::setBool(bool value, const std::string& key) {
    m_domain->change(key, value);
}

void NSUserDefaults::setString(std::string value, const std::string& key) {
    m_domain->change(key, std::move(value));
}

void NSUserDefaults::removeObjectForKey(const std::string& key) {
    m_domain->change(key, std::nullopt);
}

void NSUserDefaults::registerDefaults(const Dictionary& defaults) {
    m_domain->addDefaults(defaults);
}

void NSUserDefaults::limitStoredInteger(const std::string& key, std::int64_t first, std::int64_t last) {
    m_domain->limitStored(key, {first, last});
}

bool NSUserDefaults::synchronize() {
    return m_domain->store();
}

void NSUserDefaults::keepInMemory() {
    m_domain->detach();
}

} // namespace anadrome

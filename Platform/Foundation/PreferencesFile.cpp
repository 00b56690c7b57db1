#include "Platform/Foundation/PreferencesFile.h"

#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserFolders.h"

#include <QSettings>
#include <QVariant>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// QSettings keeps a lock file while it reads, merges and writes, and renames the new file over the old one.
// Its form has no types: a value is a Boolean or a number if it reads like one.

namespace anadrome {

namespace {

template <typename Number>
std::optional<Value> numberIn(std::string_view text) {
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional<Value>(number) : std::nullopt;
}

Value typed(const std::string& text) {
    if (text == "true" || text == "false")
        return text == "true";
    if (const auto whole = numberIn<std::int64_t>(text))
        return *whole;
    return numberIn<double>(text).value_or(text);
}

/// Invalid for types that the file doesn't hold.
QVariant variantOf(const Value& value) {
    if (const bool* boolean = value.asBool())
        return *boolean;
    if (const auto whole = value.asInteger())
        return QVariant::fromValue<qlonglong>(*whole);
    if (const auto number = value.asNumber())
        return *number;
    const std::string* string = value.asString();
    if (!string)
        return {};
    // Bytes are marked as such in the file: so a string that reads like a number comes back as a string.
    return typed(*string).asString() ? QVariant(QString::fromStdString(*string))
                                     : QVariant(QByteArray::fromStdString(*string));
}

/// Nothing for what only other programs put into the file.
std::optional<Value> valueOf(const QVariant& variant) {
    switch (variant.typeId()) {
    case QMetaType::QByteArray:
        return variant.toByteArray().toStdString();
    case QMetaType::Bool:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::QString:
        return typed(variant.toString().toStdString());
    default:
        return std::nullopt;
    }
}

Dictionary contentOf(const QSettings& settings) {
    Dictionary content;
    for (const QString& key : settings.allKeys()) {
        if (key.isEmpty())
            continue;
        if (auto value = valueOf(settings.value(key)))
            content.insert_or_assign(key.toStdString(), std::move(*value));
    }
    return content;
}

} // namespace

PreferencesFile::PreferencesFile(std::string path) : m_path(std::move(path)) {
    // Makes Qt's table of settings files now: at the program's end, what was made first goes last.
    const QSettings settings(QStringLiteral("/dev/null"), QSettings::IniFormat);
}

Dictionary PreferencesFile::read() const {
    if (auto content = intactContent())
        return std::move(*content);
    debugLog("The preferences in " + m_path + " can't be read and count as absent.");
    // One that we mustn't read may be sound.
    if (::faccessat(AT_FDCWD, m_path.c_str(), R_OK, AT_EACCESS) == 0)
        std::rename(m_path.c_str(), (m_path + ".damaged").c_str());
    return {};
}

std::optional<Dictionary> PreferencesFile::merge(const PreferenceChanges& changes) const {
    read(); // Which moves a damaged file out of the way.
    makePrivateFolders(URL::fileURLWithPath(m_path).deletingLastPathComponent().path());
    QSettings settings(QString::fromStdString(m_path), QSettings::IniFormat);
    for (const auto& [key, value] : changes) {
        const QVariant variant = value ? variantOf(*value) : QVariant();
        if (variant.isValid())
            settings.setValue(QString::fromStdString(key), variant);
        else
            settings.remove(QString::fromStdString(key));
    }
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return contentOf(settings);
    debugLog("The preferences can't be stored in " + m_path + ".");
    return std::nullopt;
}

std::optional<Dictionary> PreferencesFile::intactContent() const {
    struct stat status {};
    if (::stat(m_path.c_str(), &status) != 0)
        return errno == ENOENT ? std::optional(Dictionary()) : std::nullopt;
    if (!S_ISREG(status.st_mode) || ::faccessat(AT_FDCWD, m_path.c_str(), R_OK, AT_EACCESS) != 0)
        return std::nullopt;
    const QSettings settings(QString::fromStdString(m_path), QSettings::IniFormat);
    Dictionary content = contentOf(settings);
    // Told only after all lines have been looked at. Another error is one of writing: Qt keeps what couldn't
    // be written and tries it again whenever the file is opened.
    return settings.status() != QSettings::FormatError ? std::optional(std::move(content)) : std::nullopt;
}

} // namespace anadrome

#include "Platform/AVFoundation/Libav/MovieMetadata.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <set>
#include <string_view>

extern "C" {
#include <libavutil/avstring.h>
#include <libavutil/opt.h>
#include <libavutil/parseutils.h>
}

namespace anadrome::libav {

namespace {

using Entries = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view creationTime = AVMetadataMovieHeaderKeyCreationTime;

// Beyond these a movie's index would be mostly text. No phone comes near.
constexpr std::size_t longestKey = 1024;
constexpr std::size_t longestText = std::size_t{64} << 10;
constexpr std::size_t mostTextInAll = std::size_t{1} << 20;

/// The names under which the demuxers give user data and tags, whatever they are called in the file.
struct PlainName {
    std::string_view name;
    const char* key;
};
constexpr PlainName plainNames[] = {
    {"album", AVMetadataQuickTimeMetadataKeyAlbum},
    {"artist", AVMetadataQuickTimeMetadataKeyArtist},
    {"author", AVMetadataQuickTimeMetadataKeyAuthor},
    {"comment", AVMetadataQuickTimeMetadataKeyComment},
    {"copyright", AVMetadataQuickTimeMetadataKeyCopyright},
    {"date", AVMetadataQuickTimeMetadataKeyCreationDate},
    {"description", AVMetadataQuickTimeMetadataKeyDescription},
    {"director", AVMetadataQuickTimeMetadataKeyDirector},
    {"genre", AVMetadataQuickTimeMetadataKeyGenre},
    {"keywords", AVMetadataQuickTimeMetadataKeyKeywords},
    {"location", AVMetadataQuickTimeMetadataKeyLocationISO6709},
    {"make", AVMetadataQuickTimeMetadataKeyMake},
    {"model", AVMetadataQuickTimeMetadataKeyModel},
    {"producer", AVMetadataQuickTimeMetadataKeyProducer},
    {"publisher", AVMetadataQuickTimeMetadataKeyPublisher},
    {"software", AVMetadataQuickTimeMetadataKeySoftware},
    {"title", AVMetadataQuickTimeMetadataKeyTitle},
};

/// All other names are the libraries' own, and some of them are orders to a muxer.
bool isReverseDomainName(std::string_view key) {
    return key.find('.') != std::string_view::npos;
}

bool isUtf8(std::string_view text) {
    const auto* at = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::uint8_t* end = at + text.size();
    std::int32_t codePoint = 0;
    while (at < end)
        if (*at == 0 || av_utf8_decode(&codePoint, &at, end, 0) < 0)
            return false;
    return true;
}

bool isText(std::string_view value) {
    return !value.empty() && isUtf8(value);
}

Entries entriesOf(const AVDictionary* dictionary) {
    Entries entries;
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(dictionary, "", entry, AV_DICT_IGNORE_SUFFIX)))
        entries.emplace(entry->key, entry->value);
    return entries;
}

std::string_view find(const Entries& entries, std::string_view name) {
    const auto found = entries.find(name);
    return found == entries.end() ? std::string_view() : found->second;
}

/// QuickTime files name the program that recorded them where others name their encoder.
void readRecordingSoftware(Entries& entries) {
    const std::string encoder(find(entries, "encoder"));
    if (find(entries, "major_brand") == "qt  " && !encoder.starts_with("Lav"))
        entries.emplace("software", encoder);
}

/// The coordinates alone: a place's name may stand behind them.
std::string_view withoutPlaceName(std::string_view location) {
    const std::size_t end = location.find('/');
    return end == std::string_view::npos ? location : location.substr(0, end + 1);
}

void add(std::vector<AVMetadataItem>& items, std::string_view key, std::string_view value,
         std::string_view language = {}) {
    if (key == AVMetadataQuickTimeMetadataKeyLocationISO6709)
        value = withoutPlaceName(value);
    if (isText(key) && isText(value))
        items.emplace_back(AVMetadataKeySpaceQuickTimeMetadata, std::string(key), std::string(value),
                           std::string(language));
}

/// A text may have twins named after their language ("title-eng"), of which one mostly says the same.
void addInAllLanguages(std::vector<AVMetadataItem>& items, const PlainName& plain, const Entries& entries) {
    const std::string_view text = find(entries, plain.name);
    const std::string prefix = std::string(plain.name) + '-';
    std::string_view ownLanguage;
    std::vector<std::pair<std::string_view, std::string_view>> translations;
    for (auto twin = entries.lower_bound(prefix); twin != entries.end() && twin->first.starts_with(prefix);
         ++twin) {
        const std::string_view language = std::string_view(twin->first).substr(prefix.size());
        if (language.size() != 3)
            continue;
        if (twin->second == text)
            ownLanguage = language;
        else
            translations.emplace_back(language, twin->second);
    }
    add(items, plain.key, text, ownLanguage);
    for (const auto& [language, translation] : translations)
        add(items, plain.key, translation, language);
}

/// The muxer takes any text for a date, the word "now" included, and keeps 32 bits of it.
std::optional<std::string> headerDate(const std::string& text) {
    constexpr std::int64_t secondsFrom1904To1970 = 2082844800;
    std::int64_t microseconds = 0;
    if (text.empty() || !std::isdigit(static_cast<unsigned char>(text.front())) ||
        av_parse_time(&microseconds, text.c_str(), 0) < 0)
        return std::nullopt;
    const std::int64_t since1904 = microseconds / 1000000 + secondsFrom1904To1970;
    return since1904 > 0 && since1904 <= UINT32_MAX ? std::optional(text) : std::nullopt;
}

bool canBeKeyed(const AVMetadataItem& item) {
    return item.keySpace() == AVMetadataKeySpaceQuickTimeMetadata && item.key().size() <= longestKey &&
           item.stringValue().size() <= longestText && isReverseDomainName(item.key()) &&
           isText(item.key()) && isText(item.stringValue());
}

} // namespace

std::vector<AVMetadataItem> metadataOf(const AVFormatContext& file) {
    Entries entries = entriesOf(file.metadata);
    readRecordingSoftware(entries);
    std::vector<AVMetadataItem> items;
    if (const std::string_view date = find(entries, creationTime); isText(date))
        items.emplace_back(AVMetadataKeySpaceMovieHeader, std::string(creationTime), std::string(date));
    for (const auto& [key, value] : entries)
        if (isReverseDomainName(key))
            add(items, key, value);
    for (const PlainName& plain : plainNames)
        if (find(entries, plain.key).empty())
            addInAllLanguages(items, plain, entries);
    return items;
}

void attachMetadata(const std::vector<AVMetadataItem>& items, AVFormatContext& movie) {
    std::set<std::string_view> written;
    std::size_t room = mostTextInAll;
    for (const AVMetadataItem& item : items) {
        if (item.keySpace() == AVMetadataKeySpaceMovieHeader && item.key() == creationTime) {
            if (const std::optional<std::string> date = headerDate(item.stringValue()))
                av_dict_set(&movie.metadata, creationTime.data(), date->c_str(), 0);
            continue;
        }
        const std::size_t size = item.key().size() + item.stringValue().size();
        if (!canBeKeyed(item) || size > room || !written.insert(item.key()).second)
            continue;
        room -= size;
        // Keys are known to differ; without a look for each among the others, thousands are quick.
        av_dict_set(&movie.metadata, item.key().c_str(), item.stringValue().c_str(), AV_DICT_MULTIKEY);
    }
    // The muxer writes either keys or user data. Keys hold all of it, in both containers.
    if (!written.empty())
        av_opt_set(movie.priv_data, "movflags", "+use_metadata_tags", 0);
}

void settleMetadata(AVFormatContext& movie) {
    av_dict_set(&movie.metadata, creationTime.data(), nullptr, 0);
}

} // namespace anadrome::libav

#pragma once

#include <string>
#include <utility>

namespace anadrome {

/// The key space of QuickTime metadata: keys are reverse domain names, whoever's they are.
inline constexpr const char* AVMetadataKeySpaceQuickTimeMetadata = "mdta";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyAlbum = "com.apple.quicktime.album";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyArtist = "com.apple.quicktime.artist";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyAuthor = "com.apple.quicktime.author";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyComment = "com.apple.quicktime.comment";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyCopyright = "com.apple.quicktime.copyright";
/// When the content was made: ISO 8601, mostly with the offset of the zone it was made in.
inline constexpr const char* AVMetadataQuickTimeMetadataKeyCreationDate = "com.apple.quicktime.creationdate";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyDescription = "com.apple.quicktime.description";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyDirector = "com.apple.quicktime.director";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyGenre = "com.apple.quicktime.genre";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyKeywords = "com.apple.quicktime.keywords";
/// Degrees of latitude and longitude, and metres above the sea if known: "+48.8577+002.2950+035.0/".
inline constexpr const char* AVMetadataQuickTimeMetadataKeyLocationISO6709 =
    "com.apple.quicktime.location.ISO6709";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyMake = "com.apple.quicktime.make";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyModel = "com.apple.quicktime.model";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyProducer = "com.apple.quicktime.producer";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyPublisher = "com.apple.quicktime.publisher";
inline constexpr const char* AVMetadataQuickTimeMetadataKeySoftware = "com.apple.quicktime.software";
inline constexpr const char* AVMetadataQuickTimeMetadataKeyTitle = "com.apple.quicktime.title";

/// The key space of what stands in the movie's header. Its one key is the date of the file's creation, ISO
/// 8601 in UTC.
inline constexpr const char* AVMetadataKeySpaceMovieHeader = "mvhd";
inline constexpr const char* AVMetadataMovieHeaderKeyCreationTime = "creation_time";

/// One piece of metadata of an asset. Immutable; all text is UTF-8.
class AVMetadataItem {
public:
    AVMetadataItem(std::string keySpace, std::string key, std::string stringValue, std::string language = {})
        : m_keySpace(std::move(keySpace)), m_key(std::move(key)), m_stringValue(std::move(stringValue)),
          m_language(std::move(language)) {}

    const std::string& keySpace() const { return m_keySpace; }
    const std::string& key() const { return m_key; }
    const std::string& stringValue() const { return m_stringValue; }
    /// Three letters of ISO 639-2; empty if the file names no language.
    const std::string& language() const { return m_language; }

    bool operator==(const AVMetadataItem&) const = default;

private:
    std::string m_keySpace;
    std::string m_key;
    std::string m_stringValue;
    std::string m_language;
};

} // namespace anadrome

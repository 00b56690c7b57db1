#include "Platform/AVFoundation/AVError.h"
#include "Tests/Platform/AVFoundation/WriterTest.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/MovieBoxes.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/Shell.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace anadrome {

using namespace testing_support;
using Json = nlohmann::json;

namespace {

using Items = std::vector<AVMetadataItem>;

AVMetadataItem keyed(std::string key, std::string text, std::string language = {}) {
    return {AVMetadataKeySpaceQuickTimeMetadata, std::move(key), std::move(text), std::move(language)};
}

AVMetadataItem headerDate(std::string text) {
    return {AVMetadataKeySpaceMovieHeader, AVMetadataMovieHeaderKeyCreationTime, std::move(text)};
}

/// Runs a tool on the file.
Json ask(const std::string& tool, const std::string& path) {
    return Json::parse(outputOf(tool + " '" + path + "'"));
}

std::string textAt(const Json& object, const std::string& name) {
    const Json found = object.value(name, Json("(none)"));
    return found.is_string() ? found.get<std::string>() : found.dump();
}

Json askExiftool(const std::string& path) {
    return ask("exiftool -j -G1 -n", path).at(0);
}

class MetadataTest : public WriterTest {
protected:
    Items metadataOf(const std::string& name) const {
        return AVAsset::assetWithURL(URL::fileURLWithPath(path(name)))->metadata();
    }

    AVAssetWriterStatus write(const std::string& name, const Items& metadata, bool indexFirst = false) {
        prepare(name);
        m_writer->setMetadata(metadata);
        m_writer->setShouldOptimizeForNetworkUse(indexFirst);
        start();
        appendMany(3);
        return finish();
    }

    void expectMovie(const std::string& name, const Items& metadata) {
        ASSERT_EQ(write(name, metadata), AVAssetWriterStatus::completed) << describe(m_writer->error());
        EXPECT_EQ(readMovie(path(name)).video.at(0).frames.size(), 3U);
    }
};

// What a phone says of its clip, and what the tools make of it.
const struct Fact {
    const char* key;
    const char* text;
    std::string tag;      ///< the plain name of a tag, if .mp4 has one
    std::string userData; ///< the three letters behind the copyright sign, if there is such user data
    const char* exifName;
    const char* exifText;
    std::string mediainfoName;
    std::string newMediainfoName = {}; ///< in 25.04, if it differs
} facts[] = {
    {AVMetadataQuickTimeMetadataKeyLocationISO6709, "+35.6586+139.7454+033.500/", "", "xyz",
     "Keys:GPSCoordinates", "35.6586 139.7454 33.5", "com_apple_quicktime_location_ISO6709",
     "Recorded_Location"},
    {AVMetadataQuickTimeMetadataKeyCreationDate, "2021-05-25T09:21:51-0700", "date", "day",
     "Keys:CreationDate", "2021:05:25 09:21:51-07:00", "com_apple_quicktime_creationdate", "Recorded_Date"},
    {AVMetadataQuickTimeMetadataKeyMake, "電話", "", "mak", "Keys:Make", "電話", "com_apple_quicktime_make",
     "Encoded_Hardware_CompanyName"},
    {AVMetadataQuickTimeMetadataKeyModel, "Phone 12", "", "mod", "Keys:Model", "Phone 12",
     "com_apple_quicktime_model", "Encoded_Hardware_Name"},
    {AVMetadataQuickTimeMetadataKeySoftware, "r14.5", "", "swr", "Keys:Software", "r14.5",
     "com_apple_quicktime_software", "Encoded_Application_Name"},
    {AVMetadataQuickTimeMetadataKeyTitle, "東京タワー", "title", "nam", "Keys:Title", "東京タワー",
     "com_apple_quicktime_title"},
    {AVMetadataQuickTimeMetadataKeyComment, "Café 🎬", "comment", "cmt", "Keys:Comment", "Café 🎬", "Comment"},
    {AVMetadataQuickTimeMetadataKeyDescription, "Up, \"down\"", "description", "", "Keys:Description",
     "Up, \"down\"", "Description"},
    {"com.android.version", "12.1", "", "", "Keys:AndroidVersion", "12.1", "com_android_version",
     "Encoded_OperatingSystem_Version"}};

/// The forms in which clips come: keys, user data alone, and tags with user data for the rest.
enum class Form { keys, userData, tags };

bool has(Form form, const Fact& fact) {
    switch (form) {
    case Form::keys:
        return true;
    case Form::userData:
        return !fact.userData.empty();
    case Form::tags:
        // There, "swr" names the encoder.
        return !fact.tag.empty() || (!fact.userData.empty() && fact.userData != "swr");
    }
    return false;
}

void makeSource(const std::string& path, Form form) {
    ClipOptions options{.frames = 2, .keyedMetadata = form == Form::keys};
    options.metadata["creation_time"] = "2021-05-25T16:21:51.000000Z";
    std::vector<const Fact*> userData;
    for (const Fact& fact : facts) {
        if (form == Form::keys)
            options.metadata[fact.key] = fact.text;
        else if (form == Form::tags && !fact.tag.empty())
            options.metadata[fact.tag] = fact.text;
        else if (!fact.userData.empty())
            userData.push_back(&fact);
    }
    makeClip(path, options);
    for (const Fact* fact : userData)
        addUserData(path, fact->userData, fact->text);
}

/// Wherever this version of the tool puts it.
std::string mediainfoText(const Json& track, const Fact& fact) {
    for (const std::string& name : {fact.mediainfoName, fact.newMediainfoName})
        for (const Json& fields : {track, track.at("extra")})
            if (fields.contains(name))
                return textAt(fields, name);
    return "(none)";
}

void expectReaders(const std::string& path, Form form) {
    const Json ffprobe =
        ask("ffprobe -v error -of json -show_entries format_tags", path).at("format").at("tags");
    const Json exiftool = askExiftool(path);
    const Json mediainfo = ask("mediainfo --Output=JSON", path).at("media").at("track").at(0);
    for (const Fact& fact : facts) {
        SCOPED_TRACE(fact.key);
        EXPECT_EQ(textAt(ffprobe, fact.key), has(form, fact) ? fact.text : "(none)");
        EXPECT_EQ(textAt(exiftool, fact.exifName), has(form, fact) ? fact.exifText : "(none)");
        EXPECT_EQ(mediainfoText(mediainfo, fact), has(form, fact) ? fact.text : "(none)");
    }
    EXPECT_EQ(textAt(ffprobe, "creation_time"), "2021-05-25T16:21:51.000000Z");
    EXPECT_EQ(textAt(exiftool, "QuickTime:CreateDate"), "2021:05:25 16:21:51");
    EXPECT_EQ(textAt(exiftool, "Track1:MediaCreateDate"), "2021:05:25 16:21:51");
    EXPECT_EQ(textAt(exiftool, "Keys:CreationTime"), "(none)");
    EXPECT_EQ(textAt(mediainfo, "Encoded_Date"), "2021-05-25 16:21:51 UTC");
}

} // namespace

TEST_F(MetadataTest, WhatAPhoneSaidArrivesInEitherContainerForEveryReader) {
    const std::pair<std::string, Form> rows[] = {{"keys.mov", Form::keys},
                                                 {"keys.mp4", Form::keys},
                                                 {"data.mov", Form::userData},
                                                 {"tags.mp4", Form::tags}};
    for (const auto& [source, form] : rows) {
        makeSource(path(source), form);
        Items expected{headerDate("2021-05-25T16:21:51.000000Z")};
        for (const Fact& fact : facts)
            if (has(form, fact))
                expected.push_back(keyed(fact.key, fact.text));
        for (const char* end : {".mov", ".mp4"}) {
            const std::string name = "from-" + source + end;
            SCOPED_TRACE(name);
            expectMovie(name, metadataOf(source));
            expectReaders(path(name), form);
            EXPECT_TRUE(std::ranges::is_permutation(metadataOf(name), expected));
        }
    }
}

TEST_F(MetadataTest, ATextIsListedOnceInEachLanguageAndNothingElseIs) {
    makeClip(path("clip.mov"), {.frames = 2});
    addUserData(path("clip.mov"), "nam", "Tower", "eng");
    addUserData(path("clip.mov"), "nam", "塔", "jpn");
    addUserData(path("clip.mov"), "ART", "One", "eng");
    addUserData(path("clip.mov"), "cmt", "\xff\xfe broken");
    addUserData(path("clip.mov"), "wrt", "a music tag");
    const Items found = metadataOf("clip.mov");
    const Items expected{keyed(AVMetadataQuickTimeMetadataKeyArtist, "One", "eng"),
                         keyed(AVMetadataQuickTimeMetadataKeyTitle, "塔", "jpn"),
                         keyed(AVMetadataQuickTimeMetadataKeyTitle, "Tower", "eng")};
    EXPECT_EQ(found, expected);
    expectMovie("out.mov", found);
    EXPECT_EQ(metadataOf("out.mov"), (Items{keyed(AVMetadataQuickTimeMetadataKeyArtist, "One"),
                                            keyed(AVMetadataQuickTimeMetadataKeyTitle, "塔")}));
}

TEST_F(MetadataTest, TheKeyIsBelievedBeforeUserDataOfTheSameMeaning) {
    makeClip(
        path("clip.mp4"),
        {.frames = 2, .keyedMetadata = true, .metadata = {{AVMetadataQuickTimeMetadataKeyModel, "exact"}}});
    addUserData(path("clip.mp4"), "mod", "about");
    addUserData(path("clip.mp4"), "xyz", "+35.6586+139.7454/Tokyo");
    EXPECT_EQ(metadataOf("clip.mp4"),
              (Items{keyed(AVMetadataQuickTimeMetadataKeyModel, "exact"),
                     keyed(AVMetadataQuickTimeMetadataKeyLocationISO6709, "+35.6586+139.7454/")}));
    EXPECT_TRUE(metadataOf("nowhere.mov").empty());
}

TEST_F(MetadataTest, WhatAFileCannotHoldIsLeftOut) {
    const AVMetadataItem good = keyed(AVMetadataQuickTimeMetadataKeyTitle, "good");
    const Items odd{
        keyed("org.example.huge", std::string(std::size_t{8} << 20, 'x')),
        keyed("org.example.broken", "\xff\xfe\xc3"),
        keyed("org.example.\xc3", "broken key"),
        keyed("org.example.empty", ""),
        keyed("", "no key"),
        keyed("timecode", "01:00:00:00"),
        keyed("major_brand", "evil"),
        keyed("location", "+0+0/"),
        {"????", "org.example.space", "an unknown key space"},
        headerDate("now"),
        headerDate("1850-01-01T00:00:00Z"),
        headerDate("\xff"),
        good,
        keyed(AVMetadataQuickTimeMetadataKeyTitle, "second"),
    };
    for (const char* name : {"odd.mov", "odd.mp4"}) {
        expectMovie(name, odd);
        EXPECT_EQ(metadataOf(name), Items{good});
    }

    Items many;
    for (int i = 0; i < 10000; ++i)
        many.push_back(keyed("org.example.key" + std::to_string(i), "text"));
    expectMovie("many.mov", many);
    EXPECT_EQ(metadataOf("many.mov").size(), many.size());

    Items tooMuch;
    for (int i = 0; i < 100; ++i)
        tooMuch.push_back(keyed("org.example.key" + std::to_string(i), std::string(60000, 'x')));
    expectMovie("large.mp4", tooMuch);
    EXPECT_GT(metadataOf("large.mp4").size(), 10U);
    EXPECT_LT(std::filesystem::file_size(path("large.mp4")), std::size_t{2} << 20);
}

TEST_F(MetadataTest, AMovieSaysNothingUnasked) {
    for (const char* name : {"plain.mov", "plain.mp4"}) {
        expectMovie(name, {});
        EXPECT_TRUE(metadataOf(name).empty());
        const Json exiftool = askExiftool(path(name));
        EXPECT_EQ(textAt(exiftool, "QuickTime:CreateDate"), "0000:00:00 00:00:00");
        for (const auto& [field, value] : exiftool.items())
            EXPECT_FALSE(field.starts_with("Keys:")) << field;
    }
}

TEST_F(MetadataTest, ADiskThatFillsUpWhileTheIndexMovesFailsTheWriter) {
    expectMovie("whole.mp4", {});
    const FileSizeLimit full(std::filesystem::file_size(path("whole.mp4")) - 100);
    EXPECT_EQ(write("cut.mp4", {}, true), AVAssetWriterStatus::failed);
    EXPECT_EQ(m_writer->error().value().code(), AVErrorDiskFull);
}

} // namespace anadrome

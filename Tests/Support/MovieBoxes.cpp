#include "Tests/Support/MovieBoxes.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace anadrome::testing_support {

namespace {

std::string readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string bigEndian(std::size_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text.push_back(static_cast<char>(value >> (8 * i)));
    return text;
}

/// Sizes of 64 bits don't occur in clips of a few frames.
std::size_t sizeAt(const std::string& bytes, std::size_t at) {
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i)
        size = size << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    if (size < 8)
        throw std::runtime_error("not a plain box");
    return size;
}

/// Where the last box of a run of boxes begins.
std::size_t lastBox(const std::string& bytes, std::size_t begin, const std::string& name) {
    std::size_t last = begin;
    for (std::size_t at = begin; at < bytes.size(); at += sizeAt(bytes, at))
        last = at;
    if (bytes.compare(last + 4, 4, name) != 0)
        throw std::runtime_error("the last box isn't " + name);
    return last;
}

void grow(std::string& bytes, std::size_t box, std::size_t by) {
    bytes.replace(box, 4, bigEndian(sizeAt(bytes, box) + by, 4));
}

/// Where the first box of that name begins in a run of boxes; npos if there is none.
std::size_t findBox(const std::string& bytes, std::size_t begin, std::size_t end, const std::string& name) {
    for (std::size_t at = begin; at < end; at += sizeAt(bytes, at))
        if (bytes.compare(at + 4, 4, name) == 0)
            return at;
    return std::string::npos;
}

/// Where the first box of that name begins in another box.
std::size_t childBox(const std::string& bytes, std::size_t box, const std::string& name) {
    const std::size_t child = findBox(bytes, box + 8, box + sizeAt(bytes, box), name);
    if (child == std::string::npos)
        throw std::runtime_error("there is no " + name);
    return child;
}

std::size_t videoTrack(const std::string& bytes, std::size_t movie) {
    const std::size_t end = movie + sizeAt(bytes, movie);
    for (std::size_t at = findBox(bytes, movie + 8, end, "trak"); at != std::string::npos;
         at = findBox(bytes, at + sizeAt(bytes, at), end, "trak"))
        if (bytes.compare(childBox(bytes, childBox(bytes, at, "mdia"), "hdlr") + 16, 4, "vide") == 0)
            return at;
    throw std::runtime_error("there is no track of pictures");
}

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    return number;
}

std::string box(const std::string& name, const std::string& content) {
    return bigEndian(8 + content.size(), 4) + name + content;
}

std::size_t rounded(double value) {
    return static_cast<std::size_t>(std::llround(value));
}

} // namespace

std::vector<std::string> outermostBoxes(const std::string& path) {
    const std::string bytes = readAll(path);
    std::vector<std::string> names;
    for (std::size_t at = 0; at < bytes.size(); at += sizeAt(bytes, at))
        names.push_back(bytes.substr(at + 4, 4));
    return names;
}

void makeFirstSoundUnknown(const std::string& path) {
    std::string bytes = readAll(path);
    // In the sample table behind the track's handler, the first entry's name stands sixteen bytes behind that
    // of the table. Readers that don't know it still look for "esds", which names the codec a second time.
    const std::size_t table = bytes.find("stsd", bytes.find("soun", bytes.rfind("moov")));
    if (table == std::string::npos)
        throw std::runtime_error("there is no sound to make unknown");
    const std::size_t entry = table + 16;
    bytes.replace(entry, 4, "xq4z");
    if (const std::size_t description = bytes.find("esds", entry); description < bytes.find("trak", entry))
        bytes.replace(description, 4, "xq4d");
    std::ofstream(path, std::ios::binary) << bytes;
}

void addUserData(const std::string& path, const std::string& name, const std::string& text,
                 const std::string& language) {
    std::string bytes = readAll(path);
    const std::size_t movie = lastBox(bytes, 0, "moov");
    const std::size_t userData = lastBox(bytes, movie + 8, "udta");
    std::size_t packedLanguage = 0;
    for (const char letter : language)
        packedLanguage = packedLanguage << 5 | static_cast<std::size_t>(letter - 0x60);
    const std::string box = bigEndian(12 + text.size(), 4) + "\xa9" + name + bigEndian(text.size(), 2) +
                            bigEndian(packedLanguage, 2) + text;
    grow(bytes, movie, box.size());
    grow(bytes, userData, box.size());
    std::ofstream(path, std::ios::binary) << bytes << box;
}

void setEdits(const std::string& path, const std::vector<MovieEdit>& edits) {
    std::string bytes = readAll(path);
    const std::size_t movie = findBox(bytes, 0, bytes.size(), "moov");
    const std::size_t track = videoTrack(bytes, movie);
    const double movieScale = numberAt(bytes, childBox(bytes, movie, "mvhd") + 20);
    const double scale = numberAt(bytes, childBox(bytes, childBox(bytes, track, "mdia"), "mdhd") + 20);

    // The old list says where the first picture lies.
    const std::size_t old = childBox(bytes, track, "edts");
    const std::size_t oldSize = sizeAt(bytes, old);
    const std::size_t oldList = childBox(bytes, old, "elst");
    const std::uint32_t origin = numberAt(bytes, oldList + 4 + 12 * numberAt(bytes, oldList + 12) + 4);

    std::string list = bigEndian(0, 4) + bigEndian(edits.size(), 4);
    for (const MovieEdit& edit : edits)
        list +=
            bigEndian(rounded(edit.seconds * movieScale), 4) +
            bigEndian(edit.mediaSeconds ? origin + rounded(*edit.mediaSeconds * scale) : ~std::size_t{0}, 4) +
            bigEndian(rounded(edit.rate * 65536), 4);
    const std::string made = box("edts", box("elst", list));
    bytes.replace(old, oldSize, made);
    grow(bytes, movie, made.size() - oldSize);
    grow(bytes, track, made.size() - oldSize);
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace anadrome::testing_support

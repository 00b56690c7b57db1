#include "Tests/Support/UnknownSound.h"

#include <cstdint>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>

namespace anadrome::testing_support {

namespace {

struct Box {
    std::string type;
    std::uint64_t typeAt = 0; ///< where the four characters stand
    std::uint64_t contents = 0;
    std::uint64_t end = 0;
};

/// The boxes of a file that is open for patching.
class BoxFile {
public:
    explicit BoxFile(const std::string& path) : file_(path, std::ios::in | std::ios::out | std::ios::binary) {
        file_.exceptions(std::ios::failbit | std::ios::badbit);
        file_.seekg(0, std::ios::end);
        size_ = static_cast<std::uint64_t>(file_.tellg());
    }

    Box whole() { return {"", 0, 0, size_}; }

    std::optional<Box> find(const Box& parent, const std::function<bool(const Box&)>& wanted) {
        for (std::uint64_t at = parent.contents; at + 8 <= parent.end;) {
            const Box box = read(at, parent.end);
            if (wanted(box))
                return box;
            at = box.end;
        }
        return std::nullopt;
    }

    std::optional<Box> find(const Box& parent, const std::string& type) {
        return find(parent, [&](const Box& box) { return box.type == type; });
    }

    std::string text(std::uint64_t at, std::size_t length) {
        std::string text(length, '\0');
        file_.seekg(static_cast<std::streamoff>(at));
        file_.read(text.data(), static_cast<std::streamsize>(length));
        return text;
    }

    void overwrite(std::uint64_t at, const std::string& text) {
        file_.seekp(static_cast<std::streamoff>(at));
        file_.write(text.data(), static_cast<std::streamsize>(text.size()));
    }

private:
    Box read(std::uint64_t at, std::uint64_t limit) {
        std::uint64_t size = number(at, 4);
        std::uint64_t header = 8;
        if (size == 1) {
            size = number(at + 8, 8);
            header = 16;
        } else if (size == 0) {
            size = limit - at;
        }
        if (size < header || at + size > limit)
            throw std::runtime_error("the file's boxes are broken");
        return {text(at + 4, 4), at + 4, at + header, at + size};
    }

    std::uint64_t number(std::uint64_t at, std::size_t bytes) {
        std::uint64_t number = 0;
        for (const char byte : text(at, bytes))
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }

    std::fstream file_;
    std::uint64_t size_ = 0;
};

std::optional<Box> findDeep(BoxFile& file, const Box& from, std::initializer_list<const char*> path) {
    std::optional<Box> box = from;
    for (const char* type : path)
        if (box)
            box = file.find(*box, type);
    return box;
}

bool isSoundTrack(BoxFile& file, const Box& box) {
    const auto handler = box.type == "trak" ? findDeep(file, box, {"mdia", "hdlr"}) : std::optional<Box>();
    constexpr std::uint64_t kHandlerKindAt = 8;
    return handler && file.text(handler->contents + kHandlerKindAt, 4) == "soun";
}

} // namespace

void makeFirstSoundUnknown(const std::string& path) {
    BoxFile file(path);
    const auto movie = file.find(file.whole(), "moov");
    const auto track =
        movie ? file.find(*movie, [&](const Box& box) { return isSoundTrack(file, box); }) : std::nullopt;
    const auto table = track ? findDeep(file, *track, {"mdia", "minf", "stbl", "stsd"}) : std::nullopt;
    if (!table)
        throw std::runtime_error("the file has no sound track that could be made unknown");
    constexpr std::uint64_t kFirstEntryTypeAt = 12;
    const std::uint64_t entryType = table->contents + kFirstEntryTypeAt;
    file.overwrite(entryType, "xq4z");

    // Readers that do not know the tag still look for this box, which names the codec a second time.
    const std::string entry = file.text(entryType, static_cast<std::size_t>(table->end - entryType));
    if (const std::size_t description = entry.find("esds"); description != std::string::npos)
        file.overwrite(entryType + description, "xq4d");
}

} // namespace anadrome::testing_support

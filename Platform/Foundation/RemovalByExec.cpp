#include "Platform/Foundation/RemovalByExec.h"

#include "Platform/Foundation/FileData.h"
#include "Platform/Foundation/TemporaryBase.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace anadrome {

namespace {

constexpr const char* removalArgument = "--remove-temporary-directory";
constexpr int allSeals = F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;

template <typename Number>
std::optional<Number> parse(std::string_view text) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Fields that end with a zero byte, which no path can hold: the exit code, the folder, the files.
std::string serialized(const RemovalOrder& order) {
    std::string text = std::to_string(order.exitCode) + '\0' + order.folder + '\0';
    for (const std::string& file : order.files)
        text += file + '\0';
    return text;
}

std::optional<RemovalOrder> deserialized(std::string_view text) {
    std::vector<std::string> fields;
    while (!text.empty()) {
        const std::size_t end = text.find('\0');
        if (end == text.npos)
            return std::nullopt;
        fields.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    const auto exitCode = fields.size() >= 2 ? parse<int>(fields[0]) : std::nullopt;
    if (!exitCode)
        return std::nullopt;
    return RemovalOrder{*exitCode, fields[1], {fields.begin() + 2, fields.end()}};
}

/// A memory file that outlives exec, or an empty descriptor.
FileDescriptor sealedOrder(const RemovalOrder& order) {
    FileDescriptor file(::memfd_create("anadrome-removal", MFD_ALLOW_SEALING));
    const std::string text = serialized(order);
    const bool isWhole =
        file && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (!isWhole || ::fcntl(file.get(), F_ADD_SEALS, allSeals) != 0)
        return {};
    return file;
}

/// Some systems add a seal of their own against execution.
bool isSealed(int descriptor) {
    const int seals = ::fcntl(descriptor, F_GET_SEALS);
    return seals >= 0 && (seals & allSeals) == allSeals;
}

std::optional<RemovalOrder> inheritedOrder(int argc, char** argv) {
    if (argc != 3 || std::string_view(argv[1]) != removalArgument)
        return std::nullopt;
    const auto descriptor = parse<int>(argv[2]);
    if (!descriptor || !isSealed(*descriptor))
        return std::nullopt;
    auto text = readData(URL::fileURLWithPath("/proc/self/fd/" + std::to_string(*descriptor)));
    if (!text)
        return std::nullopt;
    return deserialized({reinterpret_cast<const char*>(text->data()), text->size()});
}

/// A second guard against removing anything else: the folder lies in one of our bases and is named as we
/// name.
bool isProcessFolder(const std::string& path) {
    const std::filesystem::path folder(path);
    const std::vector<std::string> bases = temporaryBaseCandidates();
    return isProcessFolderName(folder.filename().native()) &&
           std::find(bases.begin(), bases.end(), folder.parent_path().string()) != bases.end();
}

void removeFolder(const std::string& folder) {
    // Whoever adds or removes files meanwhile can make a pass fail, but not many times.
    constexpr int passes = 100;
    std::error_code failure;
    for (int pass = 0; pass < passes; ++pass) {
        if (std::filesystem::remove_all(folder, failure) == 0 && !failure)
            break;
    }
    // A folder that stays is left to the next start; so is one without a lock file.
    ::unlink(lockPathOf(folder).c_str());
}

} // namespace

void carryOut(const RemovalOrder& order) {
    for (const std::string& file : order.files)
        ::unlink(file.c_str());
    if (isProcessFolder(order.folder))
        removeFolder(order.folder);
}

void execToCarryOut(const RemovalOrder& order) {
    const FileDescriptor file = sealedOrder(order);
    if (!file)
        return;
    std::string program = "anadrome";
    std::string argument = removalArgument;
    std::string descriptor = std::to_string(file.get());
    char* const argv[] = {program.data(), argument.data(), descriptor.data(), nullptr};
    ::execve("/proc/self/exe", argv, environ);
}

void carryOutInheritedOrder(int argc, char** argv) {
    const auto order = inheritedOrder(argc, argv);
    if (!order)
        return;
    carryOut(*order);
    ::_exit(order->exitCode);
}

} // namespace anadrome

#pragma once

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <cstddef>
#include <optional>
#include <span>

namespace anadrome {

/// Writes the pieces one after another into a file, replacing an existing one. Not atomic, but a failed write
/// leaves no file behind. The pieces go to the kernel in one gathering call, without a copy of their own.
std::optional<NSError> writeData(const URL& url, std::span<const std::span<const std::byte>> pieces);
std::optional<NSError> writeData(const URL& url, std::span<const std::byte> bytes);

/// The whole content of a file.
Result<NSData> readData(const URL& url);

/// A file opened to be read piece by piece from its start, straight into the caller's memory.
class FileReader {
public:
    static Result<FileReader> open(const URL& url);

    /// Bytes in the file; 0 if that can't be told.
    std::size_t size() const;

    /// Fills the pieces in order. False when the file ends before or reading fails; the pieces are then
    /// undefined.
    bool read(std::span<const std::span<std::byte>> pieces);

private:
    explicit FileReader(FileDescriptor file) : m_file(std::move(file)) {}

    FileDescriptor m_file;
};

} // namespace anadrome

#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace anadrome {

/// A file URL. Holds a path as bytes; makes no look at the disk. Two URLs are equal when their paths are.
class URL {
public:
    URL() = default;

    /// A relative path is taken from the current folder; "." and ".." and doubled slashes are folded. An
    /// empty path gives an empty URL, and so does all that is made from one.
    static URL fileURLWithPath(std::string_view path);

    bool empty() const { return m_path.empty(); }
    /// The plain path, absolute, without a trailing slash except for the root.
    const std::string& path() const { return m_path; }
    /// The path with the file scheme, percent-encoded: "file:///home/a%20b". Not a path: no file has this
    /// name.
    std::string absoluteString() const;
    std::string lastPathComponent() const;
    /// Without the dot; empty if there is none. A name that starts with its only dot has no extension.
    std::string pathExtension() const;

    URL appendingPathComponent(std::string_view component) const;
    URL deletingLastPathComponent() const;

    friend bool operator==(const URL&, const URL&) = default;

private:
    explicit URL(std::string path) : m_path(std::move(path)) {}

    std::string m_path;
};

} // namespace anadrome

#pragma once

#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <functional>
#include <optional>
#include <string>

namespace anadrome {

/// Something that a picker hands over, to be fetched when it is wanted. Any thread.
class NSItemProvider {
public:
    /// The file of the item, or the error that stood in its way.
    using FileHandler =
        std::function<void(const std::optional<URL>& file, const std::optional<NSError>& error)>;

    /// Provides a file, which stays its owner's.
    explicit NSItemProvider(URL file) : m_file(std::move(file)) {}

    bool hasItemConformingToTypeIdentifier(const std::string& identifier) const;

    /// Calls the handler once, on a queue of its own. The file may go when the handler returns, so whoever
    /// wants to keep it copies it there.
    void loadFileRepresentationForTypeIdentifier(const std::string& identifier, FileHandler handler) const;

private:
    URL m_file;
};

} // namespace anadrome

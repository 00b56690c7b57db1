#pragma once

#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>

namespace anadrome::terminal {

/// The movie to be written. It is made under a hidden name beside its place and takes its name when it is
/// whole, so that nobody ever finds half a movie there. What wasn't put in place is removed.
class OutputFile {
public:
    OutputFile(const std::string& path, bool replaceExisting);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Returns why nothing can be written to this place, as far as that can be known up front.
    std::optional<std::string> obstacle() const;

    /// Where to write.
    const URL& partialUrl() const { return m_partial; }
    const URL& url() const { return m_final; }

    /// Moves a finished file here. Returns an error message on failure.
    std::optional<std::string> moveHere(const URL& file) const;

    /// Gives the file its name. Returns an error message on failure.
    std::optional<std::string> putInPlace();

private:
    std::optional<std::string> obstacleInPlace() const;

    const URL m_final;
    const URL m_partial;
    const bool m_replaceExisting;
};

} // namespace anadrome::terminal

#pragma once

#include "Tests/Support/ScratchFolder.h"

#include <string>

namespace anadrome::testing_support {

/// A fresh certificate that vouches for itself, and its key, in PEM form.
class Certificate {
public:
    /// For whom, as "IP:127.0.0.1" or "DNS:example.com".
    explicit Certificate(const std::string& subject);

    std::string certificateFile() const { return m_folder.file("certificate.pem"); }
    std::string keyFile() const { return m_folder.file("key.pem"); }

    /// Makes this process trust it, and nobody else, from now on.
    void trust() const;

private:
    const ScratchFolder m_folder;
};

} // namespace anadrome::testing_support

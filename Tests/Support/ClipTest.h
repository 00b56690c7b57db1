#pragma once

#include "Tests/Support/ClipMaker.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace anadrome::testing_support {

/// A test with made clips in a folder of its own.
class ClipTest : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }

    /// Makes the clip and gives its path.
    std::string clip(const std::string& name, const ClipOptions& options) const {
        makeClip(path(name), options);
        return path(name);
    }

    ScratchFolder m_folder;
};

} // namespace anadrome::testing_support

#pragma once

#include "Platform/Foundation/URL.h"

#include <functional>
#include <vector>

namespace anadrome {

/// What a block of changes asks for while it runs.
class ChangeBlock {
public:
    /// Runs the block on this thread and gives the videos that it wants to be added.
    static std::vector<URL> collect(const std::function<void()>& changes);

    /// Of the block that this thread is running; null outside of one.
    static ChangeBlock* current();

    void addVideo(const URL& file) { m_newVideos.push_back(file); }

private:
    std::vector<URL> m_newVideos;
};

} // namespace anadrome

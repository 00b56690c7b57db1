#include "Platform/Photos/ChangeBlock.h"

namespace anadrome {

namespace {

thread_local ChangeBlock* running = nullptr;

} // namespace

std::vector<URL> ChangeBlock::collect(const std::function<void()>& changes) {
    ChangeBlock block;
    running = &block;
    changes();
    running = nullptr;
    return block.m_newVideos;
}

ChangeBlock* ChangeBlock::current() {
    return running;
}

} // namespace anadrome

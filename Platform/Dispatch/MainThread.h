#pragma once

#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

/// Whether the calling thread runs the blocks of DispatchQueue::main(). False before there is an application.
bool isMainThread();

/// Deletes what belongs to the main thread there, whichever thread lets go of it last; later, if that is
/// another one.
template <typename T>
struct MainThreadDeleter {
    void operator()(T* object) const {
        if (isMainThread())
            delete object;
        else
            DispatchQueue::main().async([object] { delete object; });
    }
};

} // namespace anadrome

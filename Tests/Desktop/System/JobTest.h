#pragma once

#include "Tests/Desktop/System/PrivateBus.h"
#include "Tests/Desktop/Window/WindowTest.h"

namespace anadrome::desktop {

/// Movies being made in the window, on a bus of the test's own.
class JobTest : private PrivateBus, public WindowTest {
protected:
    const PrivateBus& bus() const { return *this; }

    /// Opens a clip and taps Create; returns when the work has begun.
    void startJob(int frames = 60) {
        openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = frames}));
        click("createButton");
        ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "pie"; }));
        ASSERT_TRUE(host().job()->isRunning());
    }
    bool waitForMovie() { return waitForScreen("Preview"); }
};

} // namespace anadrome::desktop

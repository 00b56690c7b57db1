#include "Desktop/System/SleepHold.h"
#include "Tests/Desktop/System/FakeService.h"
#include "Tests/Support/EventLoop.h"

#include <QDBusUnixFileDescriptor>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace anadrome::desktop {

using testing_support::runEventLoopUntil;

namespace {

/// Grants one end of a pipe, which ends for its reader when nobody holds the other any more.
struct Grant {
    Grant() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0); }
    Grant(const Grant&) = delete;
    Grant& operator=(const Grant&) = delete;
    ~Grant() { ::close(ends[0]); }

    QVariantList give() {
        QDBusUnixFileDescriptor given;
        given.giveFileDescriptor(ends[1]);
        return {QVariant::fromValue(given)};
    }
    bool isHeld() const {
        char byte;
        return ::read(ends[0], &byte, 1) < 0;
    }

    int ends[2];
};

} // namespace

TEST(SleepHold, IsTheLoginManagersWhereThereIsNoPortalAndNotEvenABusAndNeverOutlivesItsUse) {
    const PrivateBus bus;
    const testing_support::Environment noSession("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    for (const bool comesTooLate : {false, true}) {
        SCOPED_TRACE(comesTooLate ? "too late" : "in time");
        Grant grant;
        FakeService loginManager(bus, "org.freedesktop.login1",
                                 {{"org.freedesktop.login1.Manager.Inhibit", [&] { return grant.give(); }}});
        std::optional<SleepHold> hold(std::in_place);
        if (comesTooLate)
            hold.reset();
        ASSERT_TRUE(runEventLoopUntil([&] { return loginManager.calls("Inhibit").size() == 1; }));
        const QVariantList asked = loginManager.calls("Inhibit")[0].arguments();
        EXPECT_EQ(asked.value(0), "sleep:idle");
        EXPECT_EQ(asked.value(3), "block");
        testing_support::runEventLoopFor(std::chrono::milliseconds(300));
        EXPECT_EQ(grant.isHeld(), !comesTooLate);
        hold.reset();
        EXPECT_TRUE(runEventLoopUntil([&] { return !grant.isHeld(); }));
    }
}

} // namespace anadrome::desktop

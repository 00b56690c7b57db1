#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <functional>

namespace anadrome::desktop {

/// Calls a method of another program, without waiting for it. `answered` hears of the reply or the error
/// later, on this thread; an error too if there is no such bus or no such program.
void askBus(const QDBusConnection& bus, const QDBusMessage& call,
            std::function<void(const QDBusMessage& answer)> answered);

} // namespace anadrome::desktop

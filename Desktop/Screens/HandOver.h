#pragma once

namespace anadrome {
class UIViewController;
}

namespace anadrome::desktop {

/// Gives what is presented to the user's other programs, if they are the ones to show it: a mail to their
/// mail program, a store's page to their browser. False for what a screen shows here.
bool handOver(UIViewController& presented);

} // namespace anadrome::desktop

#include "Desktop/Items/SpeedScale.h"

#include "Views/Edit/SpeedCurve.h"

namespace anadrome::desktop {

double SpeedScale::usual() {
    return positionOfSpeed(1);
}

double SpeedScale::after(double place, int steps) {
    return positionOfSpeed(speedAtPosition(static_cast<float>(place)) + steps / 10.0);
}

} // namespace anadrome::desktop

#pragma once

namespace anadrome {

/// What every program of this house does first in its main(): finishes a removal that it may have been
/// started for (TemporaryDirectory), lets failed writes be errors instead of signals, and keeps memory
/// together. The second is for after the application object is there, which takes the country's numbers: in
/// this program and its files numbers have a point.
void setUpProcess(int argc, char** argv);
void setUpNumbers();

} // namespace anadrome

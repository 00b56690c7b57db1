#pragma once

namespace anadrome {

/// Declares what the program is made of: its storyboards and the scene "Default Configuration", which opens
/// the Title screen. Once, before UIApplication::launch().
void declareApp();

} // namespace anadrome

#pragma once

namespace anadrome {

/// Makes all screens known by the names of their storyboards. Once, before the first screen is opened.
void registerStoryboards();

} // namespace anadrome

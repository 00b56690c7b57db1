#pragma once

namespace anadrome {

/// What is told about an ad that is wanted, besides the place that it is for.
class GADRequest {};

} // namespace anadrome

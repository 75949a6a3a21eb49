#pragma once
// Time values of the base library.

#include <limits>

namespace lqm {

/// The earliest time a value can have: reading at it gives the first sample.
inline double earliestTimeValue() { return std::numeric_limits<double>::lowest(); }

}  // namespace lqm

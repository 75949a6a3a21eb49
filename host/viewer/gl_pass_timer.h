#pragma once
// How long a GL pass takes, the driver's work included: GL is finished before
// the pass and after it, so that the time holds what the calls did and not
// only their issuing (a driver may defer the drawing until a flush).

#include <functional>

namespace sorrel {

/// Wall-clock seconds from the start of `pass` until GL finished its work.
double finishedSeconds(const std::function<void()>& pass);

}  // namespace sorrel

#pragma once
// Wall-clock seconds of a piece of work, for benchmarks that time a path and
// its floor in the same run.

#include <chrono>

namespace bench {

template <class Work>
double secondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace bench

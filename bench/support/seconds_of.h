#pragma once
// Wall-clock seconds of a piece of work, for benchmarks that time a path and
// its floor in the same run.

#include <time.h>

#include <chrono>

namespace bench {

template <class Work>
double secondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Seconds of CPU time this thread spent on a piece of work, its kernel time
/// (page faults) included: what other processes run meanwhile does not count.
template <class Work>
double threadSecondsOf(Work&& work) {
    timespec start{};
    timespec end{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
    work();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
    return static_cast<double>(end.tv_sec - start.tv_sec) +
           static_cast<double>(end.tv_nsec - start.tv_nsec) * 1e-9;
}

}  // namespace bench

#pragma once
// The fuzzers' oracle beside the sanitizers and the host's traps: what the
// host counts must be back where it was once the plugin's objects are gone.

#include <cstdint>

namespace fuzzing {

/// Live attribute references, sample blocks lent and group builders made,
/// not given back.
struct HostCounts {
    std::int64_t references = 0;
    std::int64_t sampleBlocks = 0;
    std::int64_t groupBuilders = 0;

    static HostCounts now();
};

/// Aborts, naming what differs, unless the host counts what it counted `before`.
void expectBalanced(const HostCounts& before);

}  // namespace fuzzing

#include "fuzz/host_counts.h"

#include <cstdio>
#include <cstdlib>

#include "host/core/attribute_host_table.h"
#include "host/core/attribute_model.h"
#include "host/core/sample_blocks.h"

namespace fuzzing {

HostCounts HostCounts::now() {
    return {sorrel::AttributeModel::instance().liveReferences(),
            sorrel::SampleBlocks::instance().outstanding(), sorrel::outstandingGroupBuilders()};
}

void expectBalanced(const HostCounts& before) {
    const HostCounts after = HostCounts::now();
    if (after.references == before.references && after.sampleBlocks == before.sampleBlocks &&
        after.groupBuilders == before.groupBuilders)
        return;
    std::fprintf(
        stderr,
        "host counts out of balance: references %lld -> %lld, sample blocks %lld -> "
        "%lld, group builders %lld -> %lld\n",
        static_cast<long long>(before.references), static_cast<long long>(after.references),
        static_cast<long long>(before.sampleBlocks), static_cast<long long>(after.sampleBlocks),
        static_cast<long long>(before.groupBuilders), static_cast<long long>(after.groupBuilders));
    std::abort();
}

}  // namespace fuzzing

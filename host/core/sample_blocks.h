#pragma once
// Sample blocks: the values of one attribute laid out as the plugin reads
// them, either in the caller's inline buffer or on the heap. A heap block
// carries the release bit and must be given back.

#include <cstdint>
#include <unordered_set>

#include "host/core/attribute_node.h"

namespace sorrel {

class SampleBlocks {
public:
    /// How the host lays blocks out, so that tests can reach every layout.
    struct Policy {
        /// Every value in one run, or one pointer per sample.
        bool contiguous = true;
        /// A contiguous block of one sample goes into the caller's inline buffer.
        bool useInlineBuffer = true;
    };

    /// The process's blocks (the plugin's table takes no context).
    static SampleBlocks& instance();

    void setPolicy(const Policy& policy) { policy_ = policy; }

    /// The block of `node`'s values; null when the node is not of `typeCode`
    /// or holds no values (a group).
    const void* lend(const AttrNode& node, int typeCode, void* inlineBuffer);
    /// Aborts for a block that needs no giving back.
    void giveBack(const void* block);
    /// Heap blocks lent and not given back.
    std::int64_t outstanding() const { return static_cast<std::int64_t>(lent_.size()); }

private:
    SampleBlocks() = default;
    struct HeapBlock;

    Policy policy_;
    std::unordered_set<const HeapBlock*> lent_;
};

}  // namespace sorrel

#include "host/core/sample_blocks.h"

#include <cstring>
#include <new>
#include <vector>

#include "host/core/attribute_model.h"

namespace sorrel {

namespace {

constexpr std::uint8_t kBlockMustRelease = 1;
constexpr std::uint8_t kBlockContiguous = 16;

// The sample block as the plugin reads it.
struct RawSampleBlock {
    std::uint32_t reserved0 = 0;
    std::uint8_t flags = 0;
    std::uint8_t reserved5[3] = {};
    std::int64_t sampleCount = 0;
    std::int64_t valuesPerSample = 0;
    const float* sampleTimes = nullptr;
    const void* sampleData = nullptr;
};
static_assert(sizeof(RawSampleBlock) == 40);

std::size_t valueWidth(int type) {
    switch (type) {
        case kInt:
            return sizeof(std::int32_t);
        case kFloat:
            return sizeof(float);
        case kDouble:
            return sizeof(double);
        case kString:
            return sizeof(const char*);
        default:
            return 0;
    }
}

const void* sampleValues(const AttrNode& node, std::size_t sample) {
    switch (node.type) {
        case kInt:
            return node.ints[sample].data();
        case kFloat:
            return node.floats[sample].data();
        case kDouble:
            return node.doubles[sample].data();
        case kString:
            return node.stringPointers[sample].data();
        default:
            return nullptr;
    }
}

}  // namespace

struct SampleBlocks::HeapBlock {
    RawSampleBlock block;  // first, so that the block's address is the record's
    std::vector<unsigned char> contiguous;
    std::vector<const void*> perSample;
};

SampleBlocks& SampleBlocks::instance() {
    static SampleBlocks* blocks = new SampleBlocks;  // outlives every static user
    return *blocks;
}

const void* SampleBlocks::lend(const AttrNode& node, int typeCode, void* inlineBuffer) {
    if (node.type != typeCode || valueWidth(typeCode) == 0) return nullptr;
    const std::size_t samples = node.sampleCount();
    const std::size_t perSample = node.valuesPerSample();

    if (policy_.useInlineBuffer && inlineBuffer != nullptr && samples == 1 && policy_.contiguous) {
        auto* block = new (inlineBuffer) RawSampleBlock;
        block->flags = kBlockContiguous;
        block->sampleCount = 1;
        block->valuesPerSample = static_cast<std::int64_t>(perSample);
        block->sampleTimes = node.times.data();
        block->sampleData = sampleValues(node, 0);
        return block;
    }

    auto* heap = new HeapBlock;
    heap->block.flags = kBlockMustRelease | (policy_.contiguous ? kBlockContiguous : 0);
    heap->block.sampleCount = static_cast<std::int64_t>(samples);
    heap->block.valuesPerSample = static_cast<std::int64_t>(perSample);
    heap->block.sampleTimes = node.times.data();
    const std::size_t width = valueWidth(typeCode);
    if (policy_.contiguous) {
        heap->contiguous.resize(samples * perSample * width);
        // Samples without values have no storage to copy from.
        for (std::size_t s = 0; s < samples && perSample != 0; ++s)
            std::memcpy(heap->contiguous.data() + s * perSample * width, sampleValues(node, s),
                        perSample * width);
        heap->block.sampleData = heap->contiguous.data();
    } else {
        for (std::size_t s = 0; s < samples; ++s) heap->perSample.push_back(sampleValues(node, s));
        heap->block.sampleData = heap->perSample.data();
    }
    lent_.insert(heap);
    return &heap->block;
}

void SampleBlocks::giveBack(const void* block) {
    const auto* heap = static_cast<const HeapBlock*>(block);
    if (lent_.erase(heap) == 0)
        failAttributeHost("release of a sample block that needs none", nullptr);
    delete heap;
}

}  // namespace sorrel

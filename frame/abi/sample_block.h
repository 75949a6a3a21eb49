#pragma once
// The host's block of samples of an attribute, read by the plugin directly.

#include <cstddef>
#include <cstdint>

namespace Tessera::Sorrel::ViewerAPI {

struct SampleBlock {
    std::uint32_t reserved0;
    std::uint8_t flags;
    std::uint8_t reserved5[3];
    std::int64_t sampleCount;
    std::int64_t valuesPerSample;
    const float* sampleTimes;
    const void* sampleData;

    /// Bits of `flags`.
    static constexpr std::uint8_t kMustRelease = 1u << 0;
    static constexpr std::uint8_t kContiguous = 1u << 4;
};
static_assert(offsetof(SampleBlock, flags) == 4);
static_assert(offsetof(SampleBlock, sampleCount) == 8);
static_assert(offsetof(SampleBlock, valuesPerSample) == 16);
static_assert(offsetof(SampleBlock, sampleTimes) == 24);
static_assert(offsetof(SampleBlock, sampleData) == 32);

}  // namespace Tessera::Sorrel::ViewerAPI

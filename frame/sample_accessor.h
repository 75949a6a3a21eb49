#pragma once
// Reads the sample nearest a time from a multi-sample attribute through the
// host's sample block.

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/abi/sample_block.h"
#include "frame/attribute.h"
#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

template <typename T>
struct SampleTraits;
template <>
struct SampleTraits<float> {
    static constexpr int kTypeCode = kFloatType;
};
template <>
struct SampleTraits<double> {
    static constexpr int kTypeCode = kDoubleType;
};
template <>
struct SampleTraits<const char*> {
    static constexpr int kTypeCode = kStringType;
};

/// Index of the sample nearest `time`; a tie keeps the lower index.
inline std::int64_t nearestSampleIndex(const float* times, std::int64_t count, float time) {
    if (count <= 1) return 0;
    std::int64_t best = 0;
    float bestDistance = std::fabs(times[0] - time);
    for (std::int64_t i = 1; i < count; ++i) {
        const float distance = std::fabs(times[i] - time);
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

/// The values of the sample nearest a time (float, double or text pointers).
template <typename T>
class SampleAccessor {
public:
    /// Float and double forms share the caller's reference.
    SampleAccessor(const Attribute& attribute, float time)
        : SampleAccessor(Attribute(attribute), time) {}
    /// The text form moves the caller's reference in.
    SampleAccessor(Attribute&& attribute, float time) : attribute_(std::move(attribute)) {
        const AttributeHandle handle = attribute_.handle();
        block_ =
            attributeHost().getSampleBlock(handle, SampleTraits<T>::kTypeCode, 1, inlineBuffer_);
        if (block_ == nullptr || block_->sampleCount == 0) return;

        const std::int64_t index =
            nearestSampleIndex(block_->sampleTimes, block_->sampleCount, time);
        if (block_->flags & SampleBlock::kContiguous) {
            values_ = static_cast<const T*>(block_->sampleData) + index * block_->valuesPerSample;
        } else {
            values_ = static_cast<const T* const*>(block_->sampleData)[index];
        }
    }
    SampleAccessor(const SampleAccessor&) = delete;
    SampleAccessor& operator=(const SampleAccessor&) = delete;
    ~SampleAccessor() {
        if (block_ != nullptr && (block_->flags & SampleBlock::kMustRelease))
            attributeHost().releaseSampleBlock(block_);
    }

    bool empty() const { return values_ == nullptr; }
    /// Values in the chosen sample; 0 when there is none.
    std::int64_t size() const { return values_ != nullptr ? block_->valuesPerSample : 0; }
    const T* data() const { return values_; }
    const T& operator[](std::int64_t i) const { return values_[i]; }

private:
    static constexpr std::size_t kInlineBufferBytes = 64;

    const SampleBlock* block_ = nullptr;
    alignas(8) unsigned char inlineBuffer_[kInlineBufferBytes] = {};
    Attribute attribute_;
    const T* values_ = nullptr;
};

}  // namespace Tessera::Sorrel::ViewerAPI

#pragma once
// The host's attribute table: values, groups, builders and sample blocks.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

struct AttributeHash;
struct SampleBlock;

/// kAttributeHostSuite version 5: only the positions the plugin calls are typed.
struct AttributeHostSuite {
    ReservedSlot reserved0to1[2];
    int (*getType)(AttributeHandle);       // 2
    void (*retainAttr)(AttributeHandle);   // 3
    void (*releaseAttr)(AttributeHandle);  // 4
    ReservedSlot reserved5;
    AttributeHash* (*getHash)(AttributeHash*, AttributeHandle);  // 6
    ReservedSlot reserved7to14[8];
    AttributeHandle (*createInt)(std::int32_t);  // 15
    ReservedSlot reserved16to24[9];
    AttributeHandle (*createDouble)(double);  // 25
    ReservedSlot reserved26to29[4];
    AttributeHandle (*createString)(const char*);  // 30
    ReservedSlot reserved31to33[3];
    AttributeHandle (*createGroup)(const char* const* names, const AttributeHandle* children,
                                   std::int64_t count, std::uint8_t flag);  // 34
    std::int64_t (*getNumberOfChildren)(AttributeHandle);                   // 35
    const char* (*getChildNameByIndex)(AttributeHandle, std::int64_t index,
                                       std::int32_t* length);                 // 36
    AttributeHandle (*getChildByIndex)(AttributeHandle, std::int64_t index);  // 37
    AttributeHandle (*getChildByName)(AttributeHandle, const char* name,
                                      std::int32_t length);  // 38
    ReservedSlot reserved39;
    GroupBuilderHandle (*createBuilder)();  // 40
    ReservedSlot reserved41;
    void (*releaseBuilder)(GroupBuilderHandle);  // 42
    void (*builderSet)(GroupBuilderHandle, const char* name, std::int32_t length,
                       AttributeHandle value, std::uint8_t flag);  // 43
    ReservedSlot reserved44to48[5];
    AttributeHandle (*builderBuild)(GroupBuilderHandle, std::uint8_t mode);  // 49
    ReservedSlot reserved50to53[4];
    bool (*getNearestInt)(const AttributeHandle*, float time, std::int64_t index,
                          std::int32_t* out);  // 54
    ReservedSlot reserved55;
    bool (*getNearestDouble)(const AttributeHandle*, float time, std::int64_t index,
                             double* out);  // 56
    bool (*getNearestString)(const AttributeHandle*, float time, std::int64_t index,
                             const char** out);  // 57
    ReservedSlot reserved58to60[3];
    const SampleBlock* (*getSampleBlock)(AttributeHandle, int typeCode, std::uint8_t flag,
                                         void* inlineBuffer);  // 61
    ReservedSlot reserved62;
    void (*releaseSampleBlock)(const SampleBlock*);  // 63
    ReservedSlot reserved64to65[2];
    AttributeHandle (*createDoubleSamples)(const float* times, std::int64_t timeCount,
                                           const double* const* values, std::int64_t valueCount,
                                           std::int64_t tupleSize, void* reservedA,
                                           void* reservedB);  // 66
};
static_assert(offsetof(AttributeHostSuite, getType) == 2 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, retainAttr) == 3 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, releaseAttr) == 4 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getHash) == 6 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createInt) == 15 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createDouble) == 25 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createString) == 30 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createGroup) == 34 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getNumberOfChildren) == 35 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getChildNameByIndex) == 36 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getChildByIndex) == 37 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getChildByName) == 38 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createBuilder) == 40 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, releaseBuilder) == 42 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, builderSet) == 43 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, builderBuild) == 49 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getNearestInt) == 54 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getNearestDouble) == 56 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getNearestString) == 57 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, getSampleBlock) == 61 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, releaseSampleBlock) == 63 * sizeof(void*));
static_assert(offsetof(AttributeHostSuite, createDoubleSamples) == 66 * sizeof(void*));
static_assert(sizeof(AttributeHostSuite) == 67 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI

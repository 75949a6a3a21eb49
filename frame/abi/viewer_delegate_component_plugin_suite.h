#pragma once
// The entry table through which the host drives a viewer delegate component.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

struct PluginObjectHandle;
struct RawLocationEvent;
struct RawUsdLocationEvent;

/// Fourteen 8-byte positions; position 11 holds a number, not a function.
struct ViewerDelegateComponentPluginSuite {
    PluginObjectHandle* (*create)(void* hostHandle);                                            // 0
    void (*destroy)(PluginObjectHandle*);                                                       // 1
    std::uint8_t (*locationEvent)(PluginObjectHandle*, const RawLocationEvent*, std::uint8_t);  // 2
    void (*locationsSelected)(PluginObjectHandle*, const char* const* paths,
                              std::int64_t count);                                // 3
    void (*setOption)(PluginObjectHandle*, OptionId, AttributeHandle givenOver);  // 4
    AttributeHandle (*getOption)(PluginObjectHandle*, OptionId);                  // 5
    void (*setup)(PluginObjectHandle*);                                           // 6
    void (*cleanup)(PluginObjectHandle*);                                         // 7
    std::uint8_t (*queryFlag)(PluginObjectHandle*);                               // 8
    AttributeHandle (*attributeQueryA)(PluginObjectHandle*, const char* text);    // 9
    AttributeHandle (*attributeQueryB)(PluginObjectHandle*, const char* text);    // 10
    std::uint64_t marker;                                                         // 11
    std::uint8_t (*usdLocationEvent)(PluginObjectHandle*, const RawUsdLocationEvent*,
                                     std::uint8_t);  // 12
    void (*usdLocationsSelected)(PluginObjectHandle*, const char* const* paths,
                                 std::int64_t count);  // 13
};
static_assert(sizeof(ViewerDelegateComponentPluginSuite) == 14 * 8);
static_assert(offsetof(ViewerDelegateComponentPluginSuite, marker) == 11 * 8);

/// The number that stands in position 11 of the table.
constexpr std::uint64_t kViewerDelegateComponentSuiteMarker = 0x0F01111D47000001ull;

}  // namespace Tessera::Sorrel::ViewerAPI

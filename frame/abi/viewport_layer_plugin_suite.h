#pragma once
// The entry table through which the host drives a viewport layer.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

struct PluginObjectHandle;

/// Fifteen entries; the same for every layer but for `create`.
struct ViewportLayerPluginSuite {
    PluginObjectHandle* (*create)(void* hostHandle);                               // 0
    void (*destroy)(PluginObjectHandle*);                                          // 1
    void (*setup)(PluginObjectHandle*);                                            // 2
    void (*cleanup)(PluginObjectHandle*);                                          // 3
    std::int32_t (*event)(PluginObjectHandle*, AttributeHandle givenOver);         // 4
    void (*draw)(PluginObjectHandle*);                                             // 5
    void (*resize)(PluginObjectHandle*, std::int32_t width, std::int32_t height);  // 6
    void (*stateChanged)(PluginObjectHandle*, std::uint8_t state, void* detail);   // 7
    void (*hostSignalA)(PluginObjectHandle*);                                      // 8
    void (*hostSignalB)(PluginObjectHandle*);                                      // 9
    void (*setOption)(PluginObjectHandle*, OptionId, AttributeHandle givenOver);   // 10
    AttributeHandle (*getOption)(PluginObjectHandle*, OptionId);                   // 11
    void (*pickerDraw)(PluginObjectHandle*, std::int32_t x, std::int32_t y, std::int32_t width,
                       std::int32_t height, AttributeHandle borrowed);  // 12
    std::uint8_t (*getLayerFlag)(PluginObjectHandle*);                  // 13
    std::int32_t (*pick)(PluginObjectHandle*, std::int32_t x, std::int32_t y, std::int32_t width,
                         std::int32_t height, std::int32_t flag, AttributeHandle* out,
                         float* depth);  // 14
};
static_assert(sizeof(ViewportLayerPluginSuite) == 15 * sizeof(void*));
static_assert(offsetof(ViewportLayerPluginSuite, pick) == 14 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI

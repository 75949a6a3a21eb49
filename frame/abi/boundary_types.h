#pragma once
// The plain types every table of the boundary is written in: opaque handles,
// option identifiers, status codes and the filler of positions never called.

#include <cstdint>

namespace Tessera::Sorrel::ViewerAPI {

/// An attribute value owned by the host; null means "no attribute".
using AttributeHandle = void*;
using GroupBuilderHandle = void*;
using OptionId = std::uint64_t;

/// Status codes at the boundary.
constexpr int kStatusOk = 0;
constexpr int kStatusFailed = -1;

/// Filler for host table positions the plugin never calls.
using ReservedSlot = void*;

/// A host function with "three outs" fills the host handle, plugin handle and
/// entry table of the object it reports.
using ThreeOutsByName = void (*)(void* hostHandle, const char* name, void** objectHostHandle,
                                 void** pluginHandle, const void** suite);
using ThreeOutsByIndex = void (*)(void* hostHandle, std::uint32_t index, void** objectHostHandle,
                                  void** pluginHandle, const void** suite);
using ThreeOuts = void (*)(void* hostHandle, void** objectHostHandle, void** pluginHandle,
                           const void** suite);

}  // namespace Tessera::Sorrel::ViewerAPI

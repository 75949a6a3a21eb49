#pragma once
// The plugin table: the rows that registerPlugin appended, in order. The
// library's getPlugins empties and refills it on every call.

#include <vector>

#include "frame/abi/plugin_row.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The process-wide row table; the host reads it through getPlugins.
std::vector<PluginRow>& pluginRows();

}  // namespace Tessera::Sorrel::ViewerAPI

#include "frame/plugin_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

std::vector<PluginRow>& pluginRows() {
    static std::vector<PluginRow> rows;
    return rows;
}

}  // namespace Tessera::Sorrel::ViewerAPI

extern "C" void registerPlugin(const Tessera::Sorrel::ViewerAPI::PluginRow* row) {
    Tessera::Sorrel::ViewerAPI::pluginRows().push_back(*row);
}

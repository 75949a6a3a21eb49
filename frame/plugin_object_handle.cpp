#include "frame/plugin_object_handle.h"

namespace Tessera::Sorrel::ViewerAPI {

void destroyPluginObject(PluginObjectHandle* handle) { delete handle; }

}  // namespace Tessera::Sorrel::ViewerAPI

#include "host/selection_layer.h"

#include "host/attribute_reading.h"
#include "host/plugin_host.h"

namespace sorrel {

void SelectionLayer::setOption(std::uint64_t id, AttrRef value) {
    static const std::uint64_t selectionModeId =
        OptionIdGenerator::instance().idOf("BeamwrightSelectionMode");
    if (id != selectionModeId) return;
    selectionMode_ = readInt(value);
}

}  // namespace sorrel

#include "host/siblings/selection_layer.h"

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/option_id_generator.h"

namespace sorrel {

void SelectionLayer::setOption(std::uint64_t id, AttrRef value) {
    static const std::uint64_t selectionModeId =
        OptionIdGenerator::instance().idOf(names::kSelectionMode);
    if (id != selectionModeId) return;
    selectionMode_ = readInt(value);
}

}  // namespace sorrel

#include "host/siblings/manipulator_flags.h"

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/plugin_objects.h"
#include "host/viewer/viewport.h"

namespace sorrel {

ManipulatorFlags askManipulatorFlags(Viewport& viewport) {
    ManipulatorFlags flags;
    const LayerObject* layer = viewport.pluginLayer(names::kPlacementLayer);
    if (layer == nullptr) return flags;
    const auto ask = [layer](const char* name) {
        return readInt(layer->getOption(name)).value_or(0) == 1;
    };
    flags.positionLocked = ask(names::kPositionLocked);
    flags.fixedRotation = ask(names::kFixedRotation);
    flags.handleAtOrigin = ask(names::kHandleAtOrigin);
    flags.shadowHandles = ask(names::kShadowHandles);
    return flags;
}

}  // namespace sorrel

#include "host/siblings/light_move_handle.h"

#include <cmath>

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/option_id_generator.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer/vector_attributes.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/world_placement.h"

namespace sorrel {

void LightMoveHandle::setOption(std::uint64_t id, AttrRef value) {
    static const std::uint64_t lightDataId = OptionIdGenerator::instance().idOf(names::kLightData);
    static const std::uint64_t modifiersId =
        OptionIdGenerator::instance().idOf(names::kCurrentModifiers);
    if (id == modifiersId) {
        ++counts_.modifiers;
        counts_.lastModifiers = readInt(value);
    } else if (id == lightDataId) {
        ++counts_.lightData;
        if (moveLight(value)) {
            ++counts_.moves;
            const bool attributesChanged = aimAtDistance(value);
            delegate_.sendTransformChange(lightPath_, attributesChanged);
        }
    }
}

bool LightMoveHandle::moveLight(const AttrRef& lightData) {
    const auto position = readDoubleTriple(lightData.child(names::kLightDataPosition));
    const auto direction = readDoubleTriple(lightData.child(names::kLightDataDirection));
    if (!position || !direction) {
        ++counts_.nullLightData;
        return false;
    }
    const ManipulatorFlags flags = flags_ ? flags_() : ManipulatorFlags{};
    if (flags.positionLocked) {
        ++counts_.held;
        return false;
    }
    Scene& scene = delegate_.scene();
    const auto current = scene.worldTransform(lightPath_);
    if (!current) return false;

    Matrix world = *current;
    const bool orientationFixed =
        readInt(lightData.child(names::kLightDataOrientationFixed)).value_or(0) != 0;
    if (!orientationFixed && !flags.fixedRotation) {
        if (const auto turned = orientationAlong(*direction))
            for (int row = 0; row < kTranslationRow; ++row)
                setMatrixRow(world, row, matrixRow(*turned, row));
    }
    setMatrixRow(world, kTranslationRow, *position);
    return placeInWorld(scene, lightPath_, world);
}

bool LightMoveHandle::aimAtDistance(const AttrRef& lightData) {
    const auto distance = readDouble(lightData.child(names::kLightDataDistance));
    if (!distance || !std::isfinite(*distance) || *distance <= 0.0) return false;
    Location& light = *delegate_.scene().find(lightPath_);
    light.attributes =
        withChild(light.attributes, names::kGeometryCenterOfInterest, doubleAttr(*distance));
    return true;
}

}  // namespace sorrel

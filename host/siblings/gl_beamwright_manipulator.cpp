#include "host/siblings/gl_beamwright_manipulator.h"

#include <cmath>

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/viewer/selection.h"
#include "host/viewer/viewer_delegate.h"

namespace sorrel {

void GLBeamwrightManipulator::followSelection() const {
    std::vector<std::unique_ptr<LightMoveHandle>> kept;
    for (const std::string& path : selectedPaths(delegate_.scene())) {
        if (!hasType(*delegate_.scene().find(path), names::kLightType)) continue;
        auto same = handles_.begin();
        while (same != handles_.end() && (*same == nullptr || (*same)->lightPath() != path)) ++same;
        kept.push_back(same != handles_.end()
                           ? std::move(*same)
                           : std::make_unique<LightMoveHandle>(delegate_, path, counts_,
                                                               [this] { return flags(); }));
    }
    handles_ = std::move(kept);
}

std::uint32_t GLBeamwrightManipulator::numberOfHandles() const {
    followSelection();
    return static_cast<std::uint32_t>(handles_.size());
}

ManipulatorHandle* GLBeamwrightManipulator::handle(std::uint32_t index) {
    followSelection();
    return index < handles_.size() ? handles_[index].get() : nullptr;
}

ManipulatorFlags GLBeamwrightManipulator::flags() const {
    return viewport_ != nullptr ? askManipulatorFlags(*viewport_) : ManipulatorFlags{};
}

double GLBeamwrightManipulator::shadowFallDistance(const std::string& lightPath) const {
    const Location* light = delegate_.scene().find(lightPath);
    const auto own = light != nullptr
                         ? readDouble(light->attributes.child(std::string(names::kGeometry) + "." +
                                                              names::kShadowFallDistance))
                         : std::nullopt;
    return own && std::isfinite(*own) && *own > 0.0 ? *own : defaultShadowFallDistance;
}

}  // namespace sorrel

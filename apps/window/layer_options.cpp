#include "apps/window/layer_options.h"

#include <variant>

#include "host/core/names.h"

namespace viewer {

namespace {

using sorrel::names::kDefaultDistance;
using sorrel::names::kEnabled;
using sorrel::names::kManipulatorScale;
using sorrel::names::kMode;
using sorrel::names::kPackageClassName;

template <typename T>
void readInto(const OptionValue& value, T& field) {
    if (const T* held = std::get_if<T>(&value)) field = *held;
}

}  // namespace

LayerOptions layerOptionsAfter(const std::vector<NamedOption>& options) {
    LayerOptions layer;
    for (const auto& [name, value] : options) {
        if (name == kEnabled) {
            int enabled = 0;
            readInto(value, enabled);
            layer.enabled = enabled != 0;
        } else if (name == kMode) {
            readInto(value, layer.mode);
        } else if (name == kDefaultDistance) {
            readInto(value, layer.defaultDistance);
        } else if (name == kManipulatorScale) {
            readInto(value, layer.manipulatorScale);
        } else if (name == kPackageClassName) {
            readInto(value, layer.packageClassName);
        }
    }
    return layer;
}

std::vector<NamedOption> allOptions(const LayerOptions& options) {
    return {{kEnabled, options.enabled ? 1 : 0},
            {kMode, options.mode},
            {kDefaultDistance, options.defaultDistance},
            {kManipulatorScale, options.manipulatorScale},
            {kPackageClassName, options.packageClassName}};
}

std::vector<NamedOption> optionChanges(const LayerOptions& before, const LayerOptions& after) {
    std::vector<NamedOption> changes;
    if (after.enabled != before.enabled) changes.emplace_back(kEnabled, after.enabled ? 1 : 0);
    if (after.mode != before.mode) changes.emplace_back(kMode, after.mode);
    if (after.defaultDistance != before.defaultDistance)
        changes.emplace_back(kDefaultDistance, after.defaultDistance);
    if (after.manipulatorScale != before.manipulatorScale)
        changes.emplace_back(kManipulatorScale, after.manipulatorScale);
    if (after.packageClassName != before.packageClassName)
        changes.emplace_back(kPackageClassName, after.packageClassName);
    return changes;
}

}  // namespace viewer

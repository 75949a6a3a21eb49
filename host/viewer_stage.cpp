#include "host/viewer_stage.h"

#include <cstdio>
#include <cstdlib>

#include "host/core/plugin_library.h"
#include "host/siblings/light_package_commands.h"
#include "host/viewer/selection.h"
#include "host/viewer/viewer_tables.h"

namespace sorrel {

namespace {

// The kinds of row that a viewer loads, by the kind's name in the row.
constexpr const char* kComponentKind = "ViewerDelegateComponentPlugin";
constexpr const char* kLayerKind = "ViewportLayerPlugin";

void* const* suiteOfRow(const PluginRowView& row) {
    if (row.setHost(viewerHostRecord()) != 0) {
        std::fprintf(stderr, "viewer stage: setHost of %s failed\n", row.name.c_str());
        std::abort();
    }
    return row.getSuite();
}

}  // namespace

ViewerStage::ViewerStage(std::int32_t width, std::int32_t height, const Vec3& eye,
                         const Vec3& target, const PluginLibrary* plugin)
    : delegate_(std::make_unique<ViewerDelegate>()),
      viewport_(std::make_unique<Viewport>(*delegate_, width, height)) {
    const double eyeXyz[3] = {eye.x, eye.y, eye.z};
    const double targetXyz[3] = {target.x, target.y, target.z};
    viewport_->lookAt(eyeXyz, targetXyz);
    installLightPackageCommands(*delegate_);

    selectionLayer_ =
        static_cast<SelectionLayer*>(&viewport_->addHostLayer(std::make_unique<SelectionLayer>()));
    snappingLayer_ =
        static_cast<SnappingLayer*>(&viewport_->addHostLayer(std::make_unique<SnappingLayer>()));
    auto manipulator = std::make_unique<GLBeamwrightManipulator>(*delegate_, viewport_.get());
    manipulator_ = manipulator.get();
    viewport_->addManipulator(std::move(manipulator));

    if (plugin != nullptr) loadPlugin(*plugin);
}

void ViewerStage::loadPlugin(const PluginLibrary& plugin) {
    const std::vector<PluginRowView> rows = plugin.getPlugins();
    // The host makes a delegate's components before the viewport's layers.
    for (const PluginRowView& row : rows)
        if (row.apiName == kComponentKind) delegate_->addComponent(row.name, suiteOfRow(row));
    for (const PluginRowView& row : rows)
        if (row.apiName == kLayerKind) viewport_->addPluginLayer(row.name, suiteOfRow(row));
    viewport_->forEachPluginLayer([](LayerObject& layer) { layer.setup(); });
}

ViewerStage::~ViewerStage() {
    viewport_->forEachPluginLayer([](LayerObject& layer) { layer.cleanup(); });
    viewport_->removeLayers();
    viewport_.reset();
    delegate_->removeComponents();
    delegate_.reset();
}

void ViewerStage::select(const std::vector<std::string>& paths) {
    selectLocations(*delegate_, paths);
}

}  // namespace sorrel

#pragma once
// A viewer set up as the host runs one: a viewer delegate with its light
// package commands, one viewport with a camera, the host's "SelectionLayer"
// and "SnappingLayer" and the manipulator "GLBeamwrightManipulator"; and,
// when a plugin is given, the plugin's rows loaded into it by their kind: each
// viewer delegate component on the delegate, then each viewport layer on the
// viewport in the order of the plugin's table, every layer set up.
//
// The stage composes the host's rooms: the core, the viewer and the siblings.
//
// A layer may build GL objects in setup and give them up in cleanup, so a GL
// context must be current when a stage with a plugin is made and when it is
// destroyed.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/siblings/gl_beamwright_manipulator.h"
#include "host/siblings/selection_layer.h"
#include "host/siblings/snapping_layer.h"
#include "host/viewer/vec3.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"

namespace sorrel {

class PluginLibrary;

class ViewerStage {
public:
    /// A `width` x `height` pixel viewport looking from `eye` at `target`
    /// (world space); `plugin` may be null for the host's objects alone.
    ViewerStage(std::int32_t width, std::int32_t height, const Vec3& eye, const Vec3& target,
                const PluginLibrary* plugin = nullptr);
    /// Cleans the plugin's objects up and destroys them, layers first, then
    /// the components; then the viewport and the delegate.
    ~ViewerStage();
    ViewerStage(const ViewerStage&) = delete;
    ViewerStage& operator=(const ViewerStage&) = delete;

    ViewerDelegate& delegate() { return *delegate_; }
    Scene& scene() { return delegate_->scene(); }
    Viewport& viewport() { return *viewport_; }
    SelectionLayer& selectionLayer() { return *selectionLayer_; }
    SnappingLayer& snappingLayer() { return *snappingLayer_; }
    GLBeamwrightManipulator& manipulator() { return *manipulator_; }

    /// Makes exactly `paths` the selection and tells the components.
    void select(const std::vector<std::string>& paths);

private:
    void loadPlugin(const PluginLibrary& plugin);

    std::unique_ptr<ViewerDelegate> delegate_;
    std::unique_ptr<Viewport> viewport_;
    SelectionLayer* selectionLayer_ = nullptr;
    SnappingLayer* snappingLayer_ = nullptr;
    GLBeamwrightManipulator* manipulator_ = nullptr;
};

}  // namespace sorrel

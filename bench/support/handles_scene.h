#pragma once
// The handles layer over a grid of lights with the driver taken out, and the
// floor beside it: the same GL calls of both passes made from values worked
// out beforehand, so that only the layer's own work separates the two.

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "support/vector_matrix.h"

class BeamwrightLayerVDC;

namespace bench {

/// A viewport looking at `lights` lights, with the handles layer set up and on.
/// GL is taken out before the layer builds anything.
class HandlesScene {
public:
    explicit HandlesScene(int lights);
    ~HandlesScene();
    HandlesScene(const HandlesScene&) = delete;
    HandlesScene& operator=(const HandlesScene&) = delete;

    /// The layer's draw pass, entered through its entry table as the host does.
    void drawPass() const;
    /// Forgets the pick ids of an earlier picking pass, as the host does
    /// before each; not part of what a pass costs.
    void startPicking();
    /// The layer's picking pass over the whole viewport, nothing picked yet.
    void pickingPass() const;

    BeamwrightLayerVDC& component();
    sorrel::Viewport& viewport() { return *viewport_; }
    std::size_t lightCount();

private:
    sorrel::GLContext gl;
    sorrel::ViewerDelegate delegate;
    std::unique_ptr<sorrel::Viewport> viewport_;
    sorrel::LayerObject* layer = nullptr;
    sorrel::AttrRef nothingPicked;
};

/// Both passes as the layer makes them, each GL call from a value known beforehand.
class HandlesFloor {
public:
    explicit HandlesFloor(HandlesScene& scene);

    void drawPass() const;
    void pickingPass() const;

private:
    using Mat4d = Tessera::Sorrel::ViewerUtils::Mat4d;
    using Colour = std::array<float, 4>;

    struct Light {
        Mat4d world;
        Colour colour;
        Colour pickColour;
    };

    void beginPass(bool picking) const;
    void endPass() const;

    Mat4d view;
    Mat4d projection;
    float width = 0.0f;
    float height = 0.0f;
    std::vector<Light> lights;
};

}  // namespace bench

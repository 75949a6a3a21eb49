#pragma once
// GL tests of the handles layer: a viewport of the test surface's size looking
// from (0, 0, 5) at the origin, a viewer delegate with the light component, and
// the handles layer set up from the shipped shaders and switched on.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handles_layer.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "tests/gl/gl_test.h"
#include "tests/support/light_attributes.h"

namespace handles_testing {

using Pixel = std::array<std::uint8_t, 4>;

constexpr const char* kHandlesName = "BeamwrightCOIHandlesLayer";
constexpr Pixel kBackground = {0, 0, 0, 0};
/// The eye looks down -z at the origin from this distance, world units.
constexpr double kEyeDistance = 5.0;

/// A pixel as column and row, rows from the top.
struct PixelPosition {
    int column = 0;
    int row = 0;
};

class HandlesLayerGLTest : public gl_testing::GLTest {
protected:
    HandlesLayerGLTest();
    void SetUp() override;
    void TearDown() override;

    /// A light pointing along -x: its centre of interest lies `distance` to the
    /// left of `position`, and its handle's stem runs to the right on screen.
    void addLight(const std::string& path, const sorrel::Vec3& position, double distance,
                  const std::array<float, 3>& colour, testing_support::AttributeEntries extra = {});
    /// The pixel in which a world point lands.
    PixelPosition pixelOf(const sorrel::Vec3& world) const;
    /// A plain mouse move over a pixel, sent to the handles layer.
    void moveTo(const PixelPosition& pixel) const;
    void clearColour() const;
    BeamwrightCOIHandlesLayer& handles() const;

    std::unique_ptr<sorrel::ViewerDelegate> delegate;
    std::unique_ptr<sorrel::Viewport> viewport;
    sorrel::LayerObject* layer = nullptr;

private:
    const Tessera::Sorrel::ViewerAPI::ViewportLayerPluginSuite layerSuite_;
    const Tessera::Sorrel::ViewerAPI::ViewerDelegateComponentPluginSuite componentSuite_;
};

/// The exact RGBA8 bytes of a colour with components 0 or 1.
Pixel opaque(const std::array<float, 3>& colour);

}  // namespace handles_testing

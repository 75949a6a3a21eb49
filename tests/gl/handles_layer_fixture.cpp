#include "tests/gl/handles_layer_fixture.h"

#include <GL/glew.h>

#include <cstdlib>

#include "frame/plugin_object_handle.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "scene/light_component.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace handles_testing {

namespace {
constexpr double kByteMax = 255.0;
}  // namespace

HandlesLayerGLTest::HandlesLayerGLTest()
    : layerSuite_(buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>)),
      componentSuite_(
          buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>)) {
}

void HandlesLayerGLTest::SetUp() {
    testing_support::attachHost();
    ViewerDelegateComponentPluginBase::setHost(testing_support::hostRecord());
    GLTest::SetUp();
    setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);

    delegate = std::make_unique<sorrel::ViewerDelegate>();
    delegate->addComponent("BeamwrightLayerVDC", reinterpret_cast<void* const*>(&componentSuite_));
    viewport = std::make_unique<sorrel::Viewport>(*delegate, gl_testing::kSurfaceSize,
                                                  gl_testing::kSurfaceSize);
    const double eye[3] = {0.0, 0.0, kEyeDistance};
    const double target[3] = {0.0, 0.0, 0.0};
    viewport->lookAt(eye, target);
    layer = &viewport->addPluginLayer(kHandlesName, reinterpret_cast<void* const*>(&layerSuite_));
    layer->setup();
    layer->setOption("Enabled", sorrel::intAttr(1));
    delegate->putLocation("/root", testing_support::groupAttributes());
    // The host draws its scene with depth testing; the handles leave that alone.
    glEnable(GL_DEPTH_TEST);
}

void HandlesLayerGLTest::TearDown() {
    // A test may have destroyed the layer already.
    if (viewport->pluginLayer(kHandlesName) != nullptr) layer->cleanup();
    viewport.reset();
    delegate->removeComponents();
    delegate.reset();
    glDisable(GL_DEPTH_TEST);
    GLTest::TearDown();
}

void HandlesLayerGLTest::addLight(const std::string& path, const sorrel::Vec3& position,
                                  double distance, const std::array<float, 3>& colour,
                                  testing_support::AttributeEntries extra) {
    extra.emplace_back("viewer.default.drawOptions.color",
                       sorrel::floatsAttr({colour[0], colour[1], colour[2]}));
    // Local -z, the light's direction, is world -x.
    const sorrel::Matrix world = {0, 0, -1, 0, 0,          1,          0,          0,
                                  1, 0, 0,  0, position.x, position.y, position.z, 1};
    delegate->putLocation(path, testing_support::lightAttributes(distance, std::move(extra)),
                          world);
}

PixelPosition HandlesLayerGLTest::pixelOf(const sorrel::Vec3& world) const {
    const sorrel::PickArea pixel = sorrel::pixelOfPoint(*viewport, world);
    return {pixel.x, pixel.y};
}

void HandlesLayerGLTest::moveTo(const PixelPosition& pixel) const {
    layer->event(sorrel::mouseEvent("MouseMove", pixel.column, pixel.row));
}

void HandlesLayerGLTest::clearColour() const {
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

BeamwrightCOIHandlesLayer& HandlesLayerGLTest::handles() const {
    return static_cast<BeamwrightCOIHandlesLayer&>(
        pluginObject<ViewportLayer>(static_cast<PluginObjectHandle*>(layer->handle())));
}

Pixel opaque(const std::array<float, 3>& colour) {
    const auto byte = [](float c) { return static_cast<std::uint8_t>(c * kByteMax); };
    return {byte(colour[0]), byte(colour[1]), byte(colour[2]), 255};
}

}  // namespace handles_testing

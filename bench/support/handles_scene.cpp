#include "bench/support/handles_scene.h"

#include <GL/glew.h>

#include <cstdlib>
#include <string>

#include "bench/support/gl_taken_out.h"
#include "bench/support/host_share.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handle_mesh_data.h"
#include "handles/handles_layer.h"
#include "handles/pick_id_colour.h"
#include "host/core/names.h"
#include "host/core/plugin_host.h"
#include "host/viewer/viewer_tables.h"
#include "scene/light_component.h"
#include "support/screen_constant_size.h"
#include "tests/support/light_attributes.h"

namespace bench {

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr int kSurfaceSize = 512;  // pixels
constexpr int kLightsPerRow = 100;
constexpr double kSpacing = 0.2;  // world units between lights
constexpr double kEyeDistance = 40.0;
constexpr double kCenterOfInterestDistance = 2.0;

// What the layer uses for each light; the floor uses the very same values.
constexpr double kHandleSizePixels = 120.0;
constexpr Vec3d kHandleFacing = {0.0, 0.0, 1.0};
constexpr GLbitfield kPassAttributes = 0xC604E;
constexpr int kSolidMode = 1;
constexpr int kLineMode = 3;
constexpr int kDrawPattern = 0xff00ff;
constexpr int kPickingPattern = -1;
constexpr float kPatternFactor = 0.4f;
constexpr float kDrawThickness = 1.0f;
constexpr float kPickingThickness = 10.0f;
/// The host's first pick id of a pass.
constexpr std::uint64_t kFirstPickId = 1;

const ViewportLayerPluginSuite& layerSuite() {
    static const ViewportLayerPluginSuite suite =
        buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>);
    return suite;
}

const ViewerDelegateComponentPluginSuite& componentSuite() {
    static const ViewerDelegateComponentPluginSuite suite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
    return suite;
}

/// Locations and names the floor hands to the no-op driver, as the layer's would be.
struct FloorNames {
    GLuint solid = 1;
    GLuint line = 2;
    GLuint head = 3;
    GLuint outline = 4;
    GLuint stem = 5;
    GLint solidColour = glGetUniformLocation(solid, "color");
    GLint lineColour = glGetUniformLocation(line, "color");
    GLint solidWorld = glGetUniformLocation(solid, "worldMatrix");
    GLint lineWorld = glGetUniformLocation(line, "worldMatrix");
    GLint view = glGetUniformLocation(solid, "viewMatrix");
    GLint projection = glGetUniformLocation(solid, "projectionMatrix");
    GLint viewportSize = glGetUniformLocation(solid, "viewportSize");
    GLint mode = glGetUniformLocation(solid, "mode");
    GLint pattern = glGetUniformLocation(line, "pattern");
    GLint factor = glGetUniformLocation(line, "factor");
    GLsizei headCount = static_cast<GLsizei>(arrowHeadData().indices.size());
    GLsizei outlineCount = static_cast<GLsizei>(arrowOutlineData().indices.size());
    GLsizei stemCount = static_cast<GLsizei>(arrowStemData().indices.size());
};

const FloorNames& names() {
    static const FloorNames all;
    return all;
}

/// One mesh drawn as HandleMesh draws it; the floor's calls fold to constants.
template <GLenum primitive, bool blend>
inline void drawMesh(GLuint vertexArray, GLsizei count) {
    constexpr GLbitfield kPrimitiveBit = primitive == GL_TRIANGLES ? GL_POLYGON_BIT
                                         : primitive == GL_LINES   ? GL_LINE_BIT
                                                                   : GL_POINT_BIT;
    glPushAttrib(GL_COLOR_BUFFER_BIT | kPrimitiveBit);
    if constexpr (blend) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    if constexpr (primitive == GL_TRIANGLES) glDisable(GL_CULL_FACE);
    if constexpr (primitive == GL_LINES) glLineWidth(blend ? kDrawThickness : kPickingThickness);
    if constexpr (primitive == GL_POINTS) glPointSize(kPickingThickness);
    glBindVertexArray(vertexArray);
    glDrawElements(primitive, count, GL_UNSIGNED_INT, nullptr);
    glBindVertexArray(0);
    glPopAttrib();
}

}  // namespace

HandlesScene::HandlesScene(int lights)
    : gl(kSurfaceSize, kSurfaceSize), nothingPicked(sorrel::groupAttr({})) {
    takeGLOut();
    sorrel::PluginHost::instance().allowAll();
    PluginHost* const record = separableHostRecord();
    ViewportLayerPluginBase::setHost(record);
    ViewerDelegateComponentPluginBase::setHost(record);
    setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);

    delegate.addComponent(sorrel::names::kLightComponent,
                          reinterpret_cast<void* const*>(&componentSuite()));
    viewport_ = std::make_unique<sorrel::Viewport>(delegate, kSurfaceSize, kSurfaceSize);
    const double eye[3] = {0.0, 0.0, kEyeDistance};
    const double target[3] = {0.0, 0.0, 0.0};
    viewport_->lookAt(eye, target);
    layer = &viewport_->addPluginLayer(sorrel::names::kHandlesLayer,
                                       reinterpret_cast<void* const*>(&layerSuite()));
    layer->setup();
    layer->setOption(sorrel::names::kEnabled, sorrel::intAttr(1));

    delegate.putLocation("/root", testing_support::groupAttributes());
    const sorrel::AttrRef light = testing_support::lightAttributes(kCenterOfInterestDistance);
    const double half = kLightsPerRow * kSpacing / 2.0;
    for (int i = 0; i < lights; ++i) {
        const double x = (i % kLightsPerRow) * kSpacing - half;
        const double y = (i / kLightsPerRow) * kSpacing - half;
        delegate.putLocation("/root/l" + std::to_string(i), light,
                             sorrel::translationMatrix(x, y, 0.0));
    }
    // The list is built here, not in the first measured pass.
    component().getLights();
}

HandlesScene::~HandlesScene() {
    layer->cleanup();
    viewport_.reset();
    delegate.removeComponents();
}

void HandlesScene::drawPass() const { layer->draw(); }

void HandlesScene::startPicking() {
    viewport_->clearPickedAttrs();
    viewport_->setNextPickId(kFirstPickId);
}

void HandlesScene::pickingPass() const {
    layer->pickerDraw(0, 0, kSurfaceSize, kSurfaceSize, nothingPicked);
}

BeamwrightLayerVDC& HandlesScene::component() {
    auto* const handle = static_cast<PluginObjectHandle*>(
        delegate.component(sorrel::names::kLightComponent)->handle());
    return dynamic_cast<BeamwrightLayerVDC&>(pluginObject<ViewerDelegateComponent>(handle));
}

std::size_t HandlesScene::lightCount() { return component().getLights().size(); }

HandlesFloor::HandlesFloor(HandlesScene& scene)
    : view(scene.viewport().view.data()), projection(scene.viewport().projection.data()) {
    const sorrel::Viewport& viewport = scene.viewport();
    width = static_cast<float>(viewport.width);
    height = static_cast<float>(viewport.height);
    const double* const origin = scene.viewport().camera().origin;
    const Vec3d eye = {origin[0], origin[1], origin[2]};
    std::uint64_t id = kFirstPickId;
    for (const LightLocationData* light : scene.component().getLights()) {
        const double size = screenConstantSize(viewport.width, viewport.height, view, projection,
                                               light->centerOfInterest, kHandleSizePixels);
        const Mat4d rotation =
            rotationFromTo(kHandleFacing, eye - light->centerOfInterest, light->direction);
        const Mat4d world = multiply(multiply(rotation, scalingMatrix(size)),
                                     translationMatrix(light->centerOfInterest));
        lights.push_back({world, light->color, pickIdColour(id++)});
    }
}

void HandlesFloor::beginPass(bool picking) const {
    const FloorNames& n = names();
    glPushAttrib(kPassAttributes);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    if (picking) {
        glScissor(0, 0, kSurfaceSize, kSurfaceSize);
        glEnable(GL_SCISSOR_TEST);
        glDisable(GL_LINE_SMOOTH);
    } else {
        glEnable(GL_LINE_SMOOTH);
    }
    glClear(GL_DEPTH_BUFFER_BIT);
    for (const GLuint program : {n.solid, n.line}) {
        glUseProgram(program);
        glUniformMatrix4dv(n.view, 1, GL_FALSE, view.data());
        glUniformMatrix4dv(n.projection, 1, GL_FALSE, projection.data());
        glUniform2f(n.viewportSize, width, height);
        glUniform1i(n.mode, program == n.solid ? kSolidMode : kLineMode);
    }
    glUniform1i(n.pattern, picking ? kPickingPattern : kDrawPattern);
    glUniform1f(n.factor, kPatternFactor);
}

void HandlesFloor::endPass() const {
    glUseProgram(0);
    glPopAttrib();
}

void HandlesFloor::drawPass() const {
    const FloorNames& n = names();
    beginPass(/* picking = */ false);
    for (const Light& light : lights) {
        const Colour& c = light.colour;
        glUseProgram(n.line);
        glUniform4f(n.lineColour, c[0], c[1], c[2], c[3]);
        glUniformMatrix4dv(n.lineWorld, 1, GL_FALSE, light.world.data());
        drawMesh<GL_LINES, /* blend = */ true>(n.stem, n.stemCount);
        glUseProgram(n.solid);
        glUniform4f(n.solidColour, c[0], c[1], c[2], c[3]);
        glUniformMatrix4dv(n.solidWorld, 1, GL_FALSE, light.world.data());
        drawMesh<GL_TRIANGLES, /* blend = */ true>(n.head, n.headCount);
    }
    endPass();
}

void HandlesFloor::pickingPass() const {
    const FloorNames& n = names();
    beginPass(/* picking = */ true);
    for (const Light& light : lights) {
        const Colour& c = light.pickColour;
        glUseProgram(n.line);
        glUniform4f(n.lineColour, c[0], c[1], c[2], c[3]);
        glUniformMatrix4dv(n.lineWorld, 1, GL_FALSE, light.world.data());
        drawMesh<GL_LINES, /* blend = */ false>(n.stem, n.stemCount);
        drawMesh<GL_LINES, /* blend = */ false>(n.outline, n.outlineCount);
        glUseProgram(n.solid);
        glUniform4f(n.solidColour, c[0], c[1], c[2], c[3]);
        glUniformMatrix4dv(n.solidWorld, 1, GL_FALSE, light.world.data());
        drawMesh<GL_TRIANGLES, /* blend = */ false>(n.head, n.headCount);
        drawMesh<GL_POINTS, /* blend = */ false>(n.head, n.headCount);
    }
    endPass();
}

}  // namespace bench

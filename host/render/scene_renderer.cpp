#include "host/render/scene_renderer.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>

#include "host/render/light_gizmos.h"
#include "host/render/scene_shaders.h"
#include "host/siblings/gl_beamwright_manipulator.h"
#include "host/viewer/camera_matrices.h"
#include "host/viewer/scene.h"
#include "host/viewer/viewport.h"

namespace sorrel {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kShadowMapSize = 1024;  // texels a side
constexpr int kShadowTextureUnit = 1;
/// The shadow frustum reaches this many degrees past the cone on each side.
constexpr double kShadowMarginDegrees = 5.0;
constexpr double kMaxShadowFovDegrees = 160.0;
constexpr double kShadowNear = 0.1;  // world units
constexpr double kShadowFar = 200.0;
/// Slope-scaled depth offset of the shadow pass, against shadow acne.
constexpr float kShadowOffsetFactor = 2.0f;
constexpr float kShadowOffsetUnits = 4.0f;
constexpr float kGizmoLineWidth = 1.5f;   // pixels
constexpr float kMarkerLineWidth = 2.5f;  // pixels

std::string element(const char* name, int index) {
    return std::string(name) + "[" + std::to_string(index) + "]";
}

double cosOfDegrees(double degrees) { return std::cos(degrees * kPi / 180.0); }

/// The brightest channel of the light's radiance.
double brightness(const SceneLight& light) {
    const Vec3& c = light.properties.color;
    return light.properties.intensity * std::max({c.x, c.y, c.z});
}

/// The lights the lit pass shades with: the selected first, then the brightest.
std::vector<const SceneLight*> shadedLights(const std::vector<SceneLight>& lights) {
    std::vector<const SceneLight*> order;
    for (const SceneLight& light : lights) order.push_back(&light);
    std::stable_sort(order.begin(), order.end(), [](const SceneLight* a, const SceneLight* b) {
        if (a->selected != b->selected) return a->selected;
        return brightness(*a) > brightness(*b);
    });
    if (order.size() > static_cast<std::size_t>(kMaxShadedLights)) order.resize(kMaxShadedLights);
    return order;
}

/// The world to clip matrix of a spot light's shadow map.
Matrix shadowMatrixOf(const SceneLight& light) {
    const double fov =
        std::min(light.properties.coneAngle + 2.0 * kShadowMarginDegrees, kMaxShadowFovDegrees);
    return multiplyMatrices(lookAtMatrix(light.position, light.position + light.direction),
                            perspectiveMatrix(fov, 1.0, kShadowNear, kShadowFar));
}

Matrix viewProjectionOf(const Viewport& viewport) {
    return multiplyMatrices(viewport.view, viewport.projection);
}

/// Pixels (from the bottom left corner) to clip space.
Matrix pixelProjection(const Viewport& viewport) {
    Matrix m = kIdentity;
    m[0] = 2.0 / viewport.width;
    m[5] = 2.0 / viewport.height;
    m[12] = -1.0;
    m[13] = -1.0;
    return m;
}

}  // namespace

SceneRenderer::SceneRenderer()
    : lit_("lit scene", kLitVertexShader, kLitFragmentShader),
      shadow_("shadow maps", kShadowVertexShader, kShadowFragmentShader),
      lines_("lines", kLineVertexShader, kLineFragmentShader),
      shadowMaps_(kShadowMapSize, kMaxShadowMaps) {}

SceneRenderer::~SceneRenderer() = default;

void SceneRenderer::syncMeshes(const Scene& scene) {
    for (auto it = meshBuffers_.begin(); it != meshBuffers_.end();)
        it = scene.meshes().count(it->first) == 0 ? meshBuffers_.erase(it) : std::next(it);
    for (const auto& [name, mesh] : scene.meshes()) {
        std::unique_ptr<MeshBuffers>& buffers = meshBuffers_[name];
        if (!buffers || buffers->triangleCount() != mesh.triangleCorners().size())
            buffers = std::make_unique<MeshBuffers>(mesh);
    }
}

void SceneRenderer::drawMeshes(const Scene& scene, const GLProgram& program,
                               bool withMaterials) const {
    for (const auto& [name, mesh] : scene.meshes()) {
        program.set("model", mesh.world);
        if (withMaterials) {
            program.set("baseColor", mesh.material.color);
            program.set("shininess", static_cast<float>(mesh.material.shininess));
            program.set("specular", static_cast<float>(mesh.material.specular));
        }
        meshBuffers_.at(name)->draw();
    }
}

std::vector<int> SceneRenderer::renderShadowMaps(const Scene& scene,
                                                 const std::vector<const SceneLight*>& shaded) {
    std::vector<int> maps(shaded.size(), -1);
    shadowMatrices_.clear();
    GLint previousFramebuffer = 0;
    GLint previousViewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &previousFramebuffer);
    glGetIntegerv(GL_VIEWPORT, previousViewport);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(kShadowOffsetFactor, kShadowOffsetUnits);
    shadow_.use();
    for (std::size_t i = 0; i < shaded.size(); ++i) {
        if (!shaded[i]->properties.shadows || shadowMatrices_.size() >= kMaxShadowMaps) continue;
        maps[i] = static_cast<int>(shadowMatrices_.size());
        shadowMatrices_.push_back(shadowMatrixOf(*shaded[i]));
        shadowMaps_.beginLayer(maps[i]);
        shadow_.set("lightViewProjection", shadowMatrices_.back());
        drawMeshes(scene, shadow_, /* withMaterials = */ false);
    }
    glDisable(GL_POLYGON_OFFSET_FILL);
    shadowMaps_.end(previousFramebuffer, previousViewport);
    return maps;
}

void SceneRenderer::setLights(const Viewport& viewport,
                              const std::vector<const SceneLight*>& shaded,
                              const std::vector<int>& maps) const {
    const Camera& camera = viewport.camera();
    lit_.set("eye", Vec3{camera.origin[0], camera.origin[1], camera.origin[2]});
    lit_.set("viewProjection", viewProjectionOf(viewport));
    lit_.set("skyAmbient", settings.skyAmbient);
    lit_.set("groundAmbient", settings.groundAmbient);
    lit_.set("exposure", static_cast<float>(settings.exposure));
    lit_.set("lightCount", static_cast<int>(shaded.size()));
    for (std::size_t i = 0; i < shaded.size(); ++i) {
        const SceneLight& light = *shaded[i];
        const int at = static_cast<int>(i);
        const double halfAngle = light.properties.coneAngle / 2.0;
        lit_.set(element("lightPosition", at), light.position);
        lit_.set(element("lightDirection", at), light.direction);
        lit_.set(element("lightRadiance", at), light.properties.color * light.properties.intensity);
        lit_.set(element("lightConeOuter", at), static_cast<float>(cosOfDegrees(halfAngle)));
        lit_.set(element("lightConeInner", at),
                 static_cast<float>(
                     cosOfDegrees(std::max(halfAngle - light.properties.coneFalloff, 0.0))));
        lit_.set(element("lightShadowMap", at), maps[i]);
    }
    for (std::size_t i = 0; i < shadowMatrices_.size(); ++i)
        lit_.set(element("shadowMatrix", static_cast<int>(i)), shadowMatrices_[i]);
    lit_.set("shadowMaps", kShadowTextureUnit);
    shadowMaps_.bind(kShadowTextureUnit);
}

void SceneRenderer::drawLightGizmos(const Viewport& viewport, const std::vector<SceneLight>& lights,
                                    const GLBeamwrightManipulator* manipulator) {
    lines_.use();
    lines_.set("viewProjection", viewProjectionOf(viewport));
    lineBatch_.clear();
    for (const SceneLight& light : lights) addLightGizmo(lineBatch_, light);
    glLineWidth(kGizmoLineWidth);
    lineBatch_.draw();

    // The marker shows through whatever stands in front of the light.
    const Vec3 right{viewport.view[0], viewport.view[4], viewport.view[8]};
    const Vec3 up{viewport.view[1], viewport.view[5], viewport.view[9]};
    lineBatch_.clear();
    const ManipulatorFlags flags = manipulator ? manipulator->flags() : ManipulatorFlags{};
    for (const SceneLight& light : lights) {
        if (!light.selected) continue;
        ManipulatorMarkerStyle style;
        style.handleAtOrigin = flags.handleAtOrigin;
        if (flags.shadowHandles)
            style.shadowFallDistance = manipulator->shadowFallDistance(light.path);
        addManipulatorMarker(lineBatch_, light, right, up, style);
    }
    glDisable(GL_DEPTH_TEST);
    glLineWidth(kMarkerLineWidth);
    lineBatch_.draw();
    glLineWidth(1.0f);
    glEnable(GL_DEPTH_TEST);
}

void SceneRenderer::draw(const Viewport& viewport, const Scene& scene,
                         const std::vector<SceneLight>& lights,
                         const GLBeamwrightManipulator* manipulator) {
    syncMeshes(scene);
    const std::vector<const SceneLight*> shaded = shadedLights(lights);
    const std::vector<int> maps = renderShadowMaps(scene, shaded);

    glViewport(0, 0, viewport.width, viewport.height);
    const Vec3& background = settings.background;
    glClearColor(static_cast<float>(background.x), static_cast<float>(background.y),
                 static_cast<float>(background.z), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);

    lit_.use();
    setLights(viewport, shaded, maps);
    drawMeshes(scene, lit_, /* withMaterials = */ true);
    if (settings.lightGizmos) drawLightGizmos(viewport, lights, manipulator);
    glUseProgram(0);
}

void SceneRenderer::drawCursorMarker(const Viewport& viewport, double x, double y) {
    lines_.use();
    lines_.set("viewProjection", pixelProjection(viewport));
    lineBatch_.clear();
    // Pixel centres, with rows counted from the bottom as GL counts them.
    addCursorMarker(lineBatch_, x + 0.5, viewport.height - y - 0.5);
    glDisable(GL_DEPTH_TEST);
    glLineWidth(kMarkerLineWidth);
    lineBatch_.draw();
    glLineWidth(1.0f);
    glEnable(GL_DEPTH_TEST);
    glUseProgram(0);
}

}  // namespace sorrel

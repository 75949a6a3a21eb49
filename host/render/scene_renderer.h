#pragma once
// The host's drawing of its scene in a viewport, beneath the plugin's layers:
// the meshes lit by the scene's spot lights (Blinn-Phong, a smooth cone edge,
// shadow maps from the lights that cast shadows), each light as a gizmo
// showing where it aims, and the manipulator's marker on the selected lights.
//
// The viewport shades with at most kMaxShadedLights lights (the selected
// ones first, then the brightest), and of them at most kMaxShadowMaps cast
// shadows; every light shows its gizmo.
//
// The renderer owns its GL objects: make it and destroy it with the same
// context current, and draw with that context.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/render/gl_program.h"
#include "host/render/line_batch.h"
#include "host/render/mesh_buffers.h"
#include "host/render/shadow_maps.h"
#include "host/viewer/scene_light.h"

namespace sorrel {

class GLBeamwrightManipulator;
class Scene;
class Viewport;

/// The look of the viewport.
struct RenderSettings {
    Vec3 background{0.13, 0.14, 0.16};     // display red, green, blue
    Vec3 skyAmbient{0.10, 0.11, 0.13};     // linear, from above
    Vec3 groundAmbient{0.04, 0.04, 0.04};  // linear, from below
    double exposure = 1.0;
    /// Lights' gizmos and the manipulator's marker over the shaded scene.
    bool lightGizmos = true;
};

class SceneRenderer {
public:
    /// Builds the programs; throws std::runtime_error when a shader fails.
    SceneRenderer();
    ~SceneRenderer();
    SceneRenderer(const SceneRenderer&) = delete;
    SceneRenderer& operator=(const SceneRenderer&) = delete;

    RenderSettings settings;

    /// Clears the bound framebuffer and draws the scene as `viewport` sees it,
    /// lit by `lights`, the marker on the selected lights as `manipulator`
    /// shows it (when given). Leaves depth testing on and no program in use.
    void draw(const Viewport& viewport, const Scene& scene, const std::vector<SceneLight>& lights,
              const GLBeamwrightManipulator* manipulator = nullptr);
    /// Marks a pixel of the viewport (x from the left, y from the top) over
    /// everything drawn so far.
    void drawCursorMarker(const Viewport& viewport, double x, double y);

private:
    /// Makes buffers for new or changed meshes and drops those of meshes gone.
    void syncMeshes(const Scene& scene);
    void drawMeshes(const Scene& scene, const GLProgram& program, bool withMaterials) const;
    /// Renders a shadow map for each light that casts shadows; returns each
    /// shaded light's map, or -1.
    std::vector<int> renderShadowMaps(const Scene& scene,
                                      const std::vector<const SceneLight*>& shaded);
    void setLights(const Viewport& viewport, const std::vector<const SceneLight*>& shaded,
                   const std::vector<int>& maps) const;
    void drawLightGizmos(const Viewport& viewport, const std::vector<SceneLight>& lights,
                         const GLBeamwrightManipulator* manipulator);

    GLProgram lit_;
    GLProgram shadow_;
    GLProgram lines_;
    ShadowMaps shadowMaps_;
    LineBatch lineBatch_;
    std::map<std::string, std::unique_ptr<MeshBuffers>> meshBuffers_;
    std::vector<Matrix> shadowMatrices_;
};

}  // namespace sorrel

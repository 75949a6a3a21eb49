// BeamwrightCOIHandlesLayer: the draw pass and the picking pass, two faces of
// one walk over the light list.

#include <GL/glew.h>

#include <array>

#include "frame/wrappers.h"
#include "handles/handle_transform.h"
#include "handles/handles_layer.h"
#include "handles/pick_id_colour.h"
#include "scene/light_component.h"
#include "support/screen_constant_size.h"

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

/// Everything a pass changes comes back with one pop.
constexpr GLbitfield kPassAttributes = GL_POINT_BIT | GL_LINE_BIT | GL_POLYGON_BIT |
                                       GL_LIGHTING_BIT | GL_COLOR_BUFFER_BIT | GL_ENABLE_BIT |
                                       GL_TEXTURE_BIT | GL_SCISSOR_BIT;
static_assert(kPassAttributes == 0xC604E);

constexpr int kSolidMode = 1;
constexpr int kLineMode = 3;
/// Stipple bits of lines in the draw pass; picking draws them solid (all bits set).
constexpr int kDrawPattern = 0xff00ff;
constexpr int kPickingPattern = -1;
/// Pixels along a line for each bit of the pattern.
constexpr float kPatternFactor = 0.4f;
/// Line widths and point sizes, pixels: picking makes the handles fatter to hit.
constexpr std::uint32_t kDrawThickness = 1;
constexpr std::uint32_t kPickingThickness = 10;
/// Twice the pixels that one model unit spans at manipulator scale 1.0.
constexpr double kHandleSizePixels = 120.0;

const Mat4d kIdentity;

Float3 toFloat3(const Vec3d& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

void setColour(GLShaderProgram& program, GLShaderProgram::Uniform uniform,
               const std::array<float, 4>& colour) {
    program.setUniform(uniform, colour[0], colour[1], colour[2], colour[3]);
}

/// The viewport's matrix, or the identity when it has none.
const double* valuesOrIdentity(const double* values) {
    return values != nullptr ? values : kIdentity.data();
}

}  // namespace

BeamwrightCOIHandlesLayer::ProgramUniforms::ProgramUniforms(GLShaderProgram& program)
    : view(program.uniform("viewMatrix")),
      projection(program.uniform("projectionMatrix")),
      viewportSize(program.uniform("viewportSize")),
      mode(program.uniform("mode")),
      colour(program.uniform("color")),
      world(program.uniform("worldMatrix")) {}

void BeamwrightCOIHandlesLayer::draw() {
    const PickedAttrsMap nothingPicked;
    drawHandles(/* picking = */ false, 0, 0, 0, 0, nothingPicked);
}

void BeamwrightCOIHandlesLayer::pickerDraw(std::int32_t x, std::int32_t y, std::int32_t width,
                                           std::int32_t height, const PickedAttrsMap& pickedMap) {
    drawHandles(/* picking = */ true, x, y, width, height, pickedMap);
}

void BeamwrightCOIHandlesLayer::drawHandles(bool picking, std::int32_t x, std::int32_t y,
                                            std::int32_t width, std::int32_t height,
                                            const PickedAttrsMap& pickedMap) {
    if (!enabled) return;
    BeamwrightLayerVDC* const component = getDelegateComponent();
    if (component == nullptr) return;
    const BeamwrightLayerVDC::LightList& lights = component->getLights();
    // No GL call before this point, so an empty pass leaves the depth buffer alone.
    if (lights.empty()) return;
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const Vec3d cameraOrigin = viewport->getActiveCamera()->getOrigin();

    glPushAttrib(kPassAttributes);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    if (picking) {
        // The area counts y from the top, GL from the bottom.
        glScissor(x, viewport->getHeight() - y - height, width, height);
        glEnable(GL_SCISSOR_TEST);
        glDisable(GL_LINE_SMOOTH);
    } else {
        glEnable(GL_LINE_SMOOTH);
    }
    // Handles overlay the scene; depth sorts them only among themselves.
    glClear(GL_DEPTH_BUFFER_BIT);
    setPassUniforms(*viewport, picking);

    const std::uint32_t thickness = picking ? kPickingThickness : kDrawThickness;
    arrowHead.setPointSize(thickness);
    arrowOutline.setLineWidth(thickness);
    arrowStem.setLineWidth(thickness);

    // Only `pickable` decides for picking, only `selected` for drawing.
    const LightLocationData* hovered = nullptr;
    for (const LightLocationData* light : lights) {
        if (picking) {
            if (light->pickable)
                drawLightHandle(viewport, cameraOrigin, *light, picking, pickedMap);
        } else if (!light->selected) {
            if (light->locationHash == hoveredLocation)
                hovered = light;  // drawn last, on top; a later match replaces it
            else
                drawLightHandle(viewport, cameraOrigin, *light, picking, pickedMap);
        }
    }
    if (hovered != nullptr) {
        glClear(GL_DEPTH_BUFFER_BIT);
        drawLightHandle(viewport, cameraOrigin, *hovered, picking, pickedMap);
    }

    glUseProgram(0);
    glPopAttrib();
}

void BeamwrightCOIHandlesLayer::setPassUniforms(const ViewportWrapper& viewport, bool picking) {
    const Mat4d view = viewport.getViewMatrix44();
    const Mat4d projection = viewport.getProjectionMatrix44();
    const auto width = static_cast<float>(viewport.getWidth());
    const auto height = static_cast<float>(viewport.getHeight());

    const auto setShared = [&](GLShaderProgram& program, const ProgramUniforms& uniforms,
                               int mode) {
        program.use();
        program.setUniform(uniforms.view, view.data());
        program.setUniform(uniforms.projection, projection.data());
        program.setUniform(uniforms.viewportSize, width, height);
        program.setUniform(uniforms.mode, mode);
    };
    setShared(solidProgram, solidUniforms, kSolidMode);
    setShared(lineProgram, lineUniforms, kLineMode);
    lineProgram.setUniform(linePattern, picking ? kPickingPattern : kDrawPattern);
    lineProgram.setUniform(lineFactor, kPatternFactor);
}

void BeamwrightCOIHandlesLayer::drawLightHandle(const std::shared_ptr<ViewportWrapper>& viewport,
                                                const Vec3d& cameraOrigin,
                                                const LightLocationData& light, bool picking,
                                                const PickedAttrsMap& pickedMap) {
    std::array<float, 4> colour = light.color;
    if (picking) {
        // Excluded lights ask for no id at all.
        if (excludedLocations.count(light.locationHash) != 0) return;
        const std::uint64_t id = addPickedAttr(light.pickerObject);
        if (pickedMap.count(id) != 0) return;
        colour = pickIdColour(id);
    }

    // +z towards the camera, the arrow (+y) as near to the light's direction as
    // it can be: the tip sits on the centre of interest, the stem runs back.
    const double scale =
        screenConstantSize(*viewport, light.centerOfInterest, manipulatorScale * kHandleSizePixels);
    const Mat4d world = handleWorldMatrix(cameraOrigin - light.centerOfInterest, light.direction,
                                          scale, light.centerOfInterest);

    const bool blend = !picking;
    lineProgram.use();
    setColour(lineProgram, lineUniforms.colour, colour);
    if (picking || hoveredLocation != light.locationHash) {
        lineProgram.setUniform(lineUniforms.world, world.data());
        arrowStem.drawLines(blend);
        if (picking) arrowOutline.drawLines(blend);
    } else {
        // The hovered light shows the line to the light instead of its stem.
        lineProgram.setUniform(lineUniforms.world, kIdentity.data());
        connectorLine.updatePositions({toFloat3(light.centerOfInterest), toFloat3(light.position)});
        connectorLine.drawLines(blend);
    }

    solidProgram.use();
    setColour(solidProgram, solidUniforms.colour, colour);
    solidProgram.setUniform(solidUniforms.world, world.data());
    arrowHead.drawTriangles(blend);
    if (picking) arrowHead.drawPoints(blend);
}

double BeamwrightCOIHandlesLayer::screenConstantSize(const ViewportWrapper& viewport,
                                                     const Vec3d& point, double size) {
    // The viewport is asked in this order for every light, as it always was.
    const double* const projection = valuesOrIdentity(viewport.getProjectionMatrix());
    const double* const view = valuesOrIdentity(viewport.getViewMatrix());
    const std::int32_t height = viewport.getHeight();
    const std::int32_t width = viewport.getWidth();
    return handleSizer(width, height, view, projection, point, size);
}

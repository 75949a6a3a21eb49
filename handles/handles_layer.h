#pragma once
// BeamwrightCOIHandlesLayer: draws a camera-facing arrow of constant screen size
// at each light's centre of interest, joins a hovered light to its centre of
// interest with a line, and takes part in the viewport's colour-coded picking.
//
// The programs and meshes hold GL names: setup, cleanup, draw, pickerDraw and
// the destructor of a layer that still holds them need the host's GL context.

#include <cstdint>
#include <memory>
#include <unordered_set>

#include "frame/viewport_layer.h"
#include "handles/handle_mesh.h"
#include "support/gl_shader_program.h"
#include "support/screen_constant_size.h"
#include "support/vector_matrix.h"

class BeamwrightLayerVDC;
struct LightLocationData;

namespace Tessera::Sorrel::ViewerAPI {
class ViewportWrapper;
}

class BeamwrightCOIHandlesLayer : public Tessera::Sorrel::ViewerAPI::ViewportLayer {
public:
    using Attribute = Tessera::Sorrel::ViewerAPI::Attribute;
    using GroupAttribute = Tessera::Sorrel::ViewerAPI::GroupAttribute;
    using OptionId = Tessera::Sorrel::ViewerAPI::OptionId;
    using PickedAttrsMap = Tessera::Sorrel::ViewerAPI::PickedAttrsMap;
    using ViewportWrapper = Tessera::Sorrel::ViewerAPI::ViewportWrapper;
    using Vec3d = Tessera::Sorrel::ViewerUtils::Vec3d;

    static constexpr double kMinManipulatorScale = 0.01;
    static constexpr double kMaxManipulatorScale = 10.0;

    BeamwrightCOIHandlesLayer() : ViewportLayer(/* layerFlag = */ false) {}
    // The fields' reverse order is the teardown order: the exclusions, the
    // meshes from connectorLine back to arrowHead, then both programs.
    ~BeamwrightCOIHandlesLayer() override = default;

    /// Builds both programs from the shader files below SORREL_ROOT and the four meshes.
    void setup() override;
    /// Gives every GL object up; the options and the hover state stay.
    void cleanup() override;
    /// Follows the pointer; never uses the event up.
    bool event(const GroupAttribute& event) override;
    void draw() override;
    void resize(std::int32_t, std::int32_t) override {}
    void hostSignalA() override {}
    void hostSignalB() override {}
    void setOption(OptionId id, Attribute value) override;
    Attribute getOption(OptionId id) override;
    /// Draws each pickable, not excluded handle in its pick id's colour; the
    /// area is in pixels with y from the top of the viewport.
    void pickerDraw(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                    const PickedAttrsMap& pickedMap) override;

    /// The component of this layer's viewer delegate, found anew at each call; not owned.
    BeamwrightLayerVDC* getDelegateComponent();
    /// The `locationHash` of what lies under pixel (x, y) in any layer of the
    /// viewport (only this one with hover on handles only), or 0.
    std::uint64_t findHoveredLocation(std::int32_t x, std::int32_t y);

    bool isEnabled() const { return enabled; }
    double getManipulatorScale() const { return manipulatorScale; }
    std::uint64_t getHoveredLocation() const { return hoveredLocation; }
    const std::unordered_set<std::uint64_t>& getExcludedLocations() const {
        return excludedLocations;
    }

private:
    void drawHandles(bool picking, std::int32_t x, std::int32_t y, std::int32_t width,
                     std::int32_t height, const PickedAttrsMap& pickedMap);
    /// Sets what stays the same for every light of a pass on both programs.
    void setPassUniforms(const ViewportWrapper& viewport, bool picking);
    /// World length of `size` / 2 pixels at the depth of `point` in this
    /// viewport, which is asked for its size and matrices at each call.
    double screenConstantSize(const ViewportWrapper& viewport, const Vec3d& point, double size);
    void drawLightHandle(const std::shared_ptr<ViewportWrapper>& viewport,
                         const Vec3d& cameraOrigin, const LightLocationData& light, bool picking,
                         const PickedAttrsMap& pickedMap);
    void setManipulatorScale(double requested);
    void setExcludedLocations(const Attribute& value);

    /// The uniforms both programs take, entered once so that a pass names none.
    struct ProgramUniforms {
        explicit ProgramUniforms(GLShaderProgram& program);
        GLShaderProgram::Uniform view;
        GLShaderProgram::Uniform projection;
        GLShaderProgram::Uniform viewportSize;
        GLShaderProgram::Uniform mode;
        GLShaderProgram::Uniform colour;
        GLShaderProgram::Uniform world;
    };

    bool enabled = false;
    GLShaderProgram solidProgram;
    GLShaderProgram lineProgram;
    const ProgramUniforms solidUniforms{solidProgram};
    const ProgramUniforms lineUniforms{lineProgram};
    const GLShaderProgram::Uniform linePattern = lineProgram.uniform("pattern");
    const GLShaderProgram::Uniform lineFactor = lineProgram.uniform("factor");
    /// Keeps what a pass's lights share of their handle sizes.
    Tessera::Sorrel::ViewerUtils::ScreenConstantSizer handleSizer;
    HandleMesh arrowHead;
    HandleMesh arrowOutline;
    HandleMesh arrowStem;
    HandleMesh connectorLine;
    double manipulatorScale = 1.0;
    /// `locationHash` under the pointer; 0 for none. Written only by `event`.
    std::uint64_t hoveredLocation = 0;
    /// `locationHash` values that picking leaves out.
    std::unordered_set<std::uint64_t> excludedLocations;
};

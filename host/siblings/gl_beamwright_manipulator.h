#pragma once
// "GLBeamwrightManipulator": the host's manipulator for placing lights, with
// one handle per selected light location. The handles follow the selection
// (the scene's `selected` flags) at each lookup; a light that stays selected
// keeps its handle object.
//
// Given its viewport, the manipulator honours the placement layer's flags
// (manipulator_flags.h): its handles ask them before each move, and the
// renderer asks flags() where to draw the handle and whether the shadow
// handles show.

#include <memory>
#include <string>
#include <vector>

#include "host/core/names.h"
#include "host/siblings/light_move_handle.h"
#include "host/viewer/manipulator.h"

namespace sorrel {

class ViewerDelegate;
class Viewport;

class GLBeamwrightManipulator : public Manipulator {
public:
    /// Without a viewport, every flag stays off.
    explicit GLBeamwrightManipulator(ViewerDelegate& delegate, Viewport* viewport = nullptr)
        : Manipulator(names::kManipulator), delegate_(delegate), viewport_(viewport) {}

    std::uint32_t numberOfHandles() const override;
    ManipulatorHandle* handle(std::uint32_t index) override;

    const LightMoveCounts& counts() const { return counts_; }

    /// The placement layer's flags for its current mode, asked now.
    ManipulatorFlags flags() const;
    /// How far along its aim the shadow handle of `lightPath` stands, world
    /// units: its "geometry.shadowFallDistance", else defaultShadowFallDistance.
    double shadowFallDistance(const std::string& lightPath) const;

    /// The placement layer's "DefaultShadowFallDistance", as the host set it.
    double defaultShadowFallDistance = 5.0;

private:
    /// Matches the handles to the selected lights, in path order.
    void followSelection() const;

    ViewerDelegate& delegate_;
    Viewport* const viewport_;
    // Refreshed from the selection on every lookup, the const ones included.
    mutable std::vector<std::unique_ptr<LightMoveHandle>> handles_;
    mutable LightMoveCounts counts_;
};

}  // namespace sorrel

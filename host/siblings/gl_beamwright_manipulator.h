#pragma once
// "GLBeamwrightManipulator": the host's manipulator for placing lights, with
// one handle per selected light location. The handles follow the selection
// (the scene's `selected` flags) at each lookup; a light that stays selected
// keeps its handle object.

#include <memory>
#include <string>
#include <vector>

#include "host/core/names.h"
#include "host/siblings/light_move_handle.h"
#include "host/viewer/manipulator.h"

namespace sorrel {

class ViewerDelegate;

class GLBeamwrightManipulator : public Manipulator {
public:
    explicit GLBeamwrightManipulator(ViewerDelegate& delegate)
        : Manipulator(names::kManipulator), delegate_(delegate) {}

    std::uint32_t numberOfHandles() const override;
    ManipulatorHandle* handle(std::uint32_t index) override;

    const LightMoveCounts& counts() const { return counts_; }

private:
    /// Matches the handles to the selected lights, in path order.
    void followSelection() const;

    ViewerDelegate& delegate_;
    // Refreshed from the selection on every lookup, the const ones included.
    mutable std::vector<std::unique_ptr<LightMoveHandle>> handles_;
    mutable LightMoveCounts counts_;
};

}  // namespace sorrel

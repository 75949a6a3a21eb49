#pragma once
// "SnappingLayer": tells what lies under a pixel of the viewport. A caller
// prepares a pick with "SnappingLayer.PreparePickOnDemand" (a group of "x" and
// "y" integers, pixels from the top left corner, and an optional string
// "StrategyType") and reads the answer at once from "SnappingLayer.PickOnDemand":
// a group of float "point" and "normal", three values each, world space, or
// null when the ray through the pixel meets no mesh.
//
// Strategies: none, "Surface" and "SurfaceNormal" answer the hit point and
// the hit triangle's normal; "Face" and "FaceNormal" the centre of the hit
// face and its normal; "ObjectCentre" the centre of the hit mesh's bounds and
// the hit normal. Any other text counts as "Surface".

#include <cstdint>
#include <optional>
#include <string>

#include "host/core/names.h"
#include "host/viewer/host_layer.h"
#include "host/viewer/vec3.h"

namespace sorrel {

class SnappingLayer : public HostLayer {
public:
    SnappingLayer() : HostLayer(names::kSnappingLayer) {}

    void setOption(std::uint64_t id, AttrRef value) override;
    AttrRef getOption(std::uint64_t id) override;

    /// A pick's answer as the layer gave it, world space.
    struct Answer {
        Vec3 point;
        Vec3 normal;
    };
    /// The latest answer since the last forgetAnswer; nothing when none was
    /// asked for or the ray met no mesh. For viewers that show what was picked.
    const std::optional<Answer>& lastAnswer() const { return lastAnswer_; }
    void forgetAnswer() { lastAnswer_.reset(); }

private:
    /// The latest prepared pick, as it was understood.
    struct Request {
        bool valid = false;  // "x" and "y" were integers
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::string strategy;  // empty when none was given
    };
    Request request_;
    std::optional<Answer> lastAnswer_;
};

}  // namespace sorrel

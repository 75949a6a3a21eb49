#include "handles/handle_mesh_data.h"

#include <cmath>

namespace {

constexpr float kTwoThirdsPi = 2.0943952f;  // radians
constexpr float kHalfBaseScale = 0.09f;
constexpr Float3 kTip = {0.0f, 0.0f, 0.0f};
// Every vertex faces the camera.
constexpr Float3 kFacing = {0.0f, 0.0f, 1.0f};

HandleMeshData withFacingNormals(std::vector<Float3> positions,
                                 std::vector<std::uint32_t> indices) {
    std::vector<Float3> normals(positions.size(), kFacing);
    return {std::move(positions), std::move(normals), std::move(indices)};
}

}  // namespace

Float3 rightBaseCorner() { return {std::sin(kTwoThirdsPi) * kHalfBaseScale, kArrowBaseY, 0.0f}; }

Float3 leftBaseCorner() { return {-std::sin(kTwoThirdsPi) * kHalfBaseScale, kArrowBaseY, 0.0f}; }

HandleMeshData arrowHeadData() {
    return withFacingNormals({kTip, rightBaseCorner(), leftBaseCorner()}, {0, 1, 2});
}

HandleMeshData arrowOutlineData() {
    return withFacingNormals({kTip, rightBaseCorner(), leftBaseCorner()}, {0, 1, 1, 2, 2, 0});
}

HandleMeshData arrowStemData() {
    return withFacingNormals({kTip, {0.0f, kStemEndY, 0.0f}}, {0, 1});
}

HandleMeshData connectorLineData() { return withFacingNormals({kTip, kTip}, {0, 1}); }

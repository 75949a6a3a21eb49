#include "host/viewer/material.h"

#include <algorithm>

namespace sorrel {

namespace {
constexpr double kMinShininess = 1.0;
constexpr double kMaxShininess = 2048.0;
/// Below this roughness the exponent would only grow past the maximum.
constexpr double kMinRoughness = 0.02;
}  // namespace

double shininessOfRoughness(double roughness) {
    // The usual match of a Beckmann slope to a Blinn-Phong lobe: 2 / r^2 - 2.
    const double r = std::max(roughness, kMinRoughness);
    return std::clamp(2.0 / (r * r) - 2.0, kMinShininess, kMaxShininess);
}

}  // namespace sorrel

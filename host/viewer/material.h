#pragma once
// How a mesh of the host's scene reflects light in the viewport: a diffuse
// colour and a Blinn-Phong highlight.

#include "host/viewer/vec3.h"

namespace sorrel {

struct Material {
    /// Diffuse colour, linear red, green and blue from 0 to 1.
    Vec3 color{0.7, 0.7, 0.7};
    /// Blinn-Phong exponent: higher is glossier, with a smaller highlight.
    double shininess = 32.0;
    /// Weight of the highlight against the light's colour, 0 for a matte surface.
    double specular = 0.3;
};

/// The Blinn-Phong exponent that stands for a roughness from 0 (mirror-like)
/// to 1 (matte); the result is clamped to what the viewport can show.
double shininessOfRoughness(double roughness);

}  // namespace sorrel

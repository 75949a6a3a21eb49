#pragma once
// The GLSL of the host's viewport: the lit scene, the depth-only pass of the
// shadow maps, and coloured lines for gizmos and markers. The array sizes
// here and in the renderer are the same constants.

namespace sorrel {

/// Lights the lit pass shades with at once, and of them the most with shadow maps.
constexpr int kMaxShadedLights = 16;
constexpr int kMaxShadowMaps = 4;

extern const char* const kLitVertexShader;
extern const char* const kLitFragmentShader;
extern const char* const kShadowVertexShader;
extern const char* const kShadowFragmentShader;
extern const char* const kLineVertexShader;
extern const char* const kLineFragmentShader;

}  // namespace sorrel

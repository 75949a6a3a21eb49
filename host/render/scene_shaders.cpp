#include "host/render/scene_shaders.h"

namespace sorrel {

// Matrices arrive as the host's row-vector matrices, which GLSL reads as their
// column-vector transposes: products run right to left as usual.

const char* const kLitVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
uniform mat4 model;
uniform mat4 viewProjection;
out vec3 worldPosition;
out vec3 worldNormal;
void main() {
    vec4 world = model * vec4(position, 1.0);
    worldPosition = world.xyz;
    worldNormal = transpose(inverse(mat3(model))) * normal;
    gl_Position = viewProjection * world;
}
)";

// Blinn-Phong spot lights with a smooth edge, inverse-square falloff from a
// reference distance, filtered shadow maps, a sky-and-ground ambient, then an
// exponential tone curve and display gamma.
const char* const kLitFragmentShader = R"(#version 330 core
const int kMaxLights = 16;
const int kMaxShadows = 4;
const float kReferenceDistance = 5.0;
const float kNormalOffset = 0.02;
const float kDepthBias = 0.0005;
const float kGamma = 2.2;

uniform int lightCount;
uniform vec3 lightPosition[kMaxLights];
uniform vec3 lightDirection[kMaxLights];
uniform vec3 lightRadiance[kMaxLights];
uniform float lightConeOuter[kMaxLights];
uniform float lightConeInner[kMaxLights];
uniform int lightShadowMap[kMaxLights];
uniform mat4 shadowMatrix[kMaxShadows];
uniform sampler2DArrayShadow shadowMaps;

uniform vec3 eye;
uniform vec3 baseColor;
uniform float shininess;
uniform float specular;
uniform vec3 skyAmbient;
uniform vec3 groundAmbient;
uniform float exposure;

in vec3 worldPosition;
in vec3 worldNormal;
out vec4 fragColor;

float lit(int map, vec3 normal) {
    vec4 clip = shadowMatrix[map] * vec4(worldPosition + normal * kNormalOffset, 1.0);
    vec3 p = clip.xyz / clip.w * 0.5 + 0.5;
    if (clip.w <= 0.0 || any(lessThan(p.xy, vec2(0.0))) || any(greaterThan(p.xy, vec2(1.0))))
        return 1.0;
    vec2 texel = 1.0 / vec2(textureSize(shadowMaps, 0).xy);
    float sum = 0.0;
    for (int dx = -1; dx <= 1; ++dx)
        for (int dy = -1; dy <= 1; ++dy)
            sum += texture(shadowMaps, vec4(p.xy + vec2(dx, dy) * texel, float(map), p.z - kDepthBias));
    return sum / 9.0;
}

void main() {
    vec3 n = normalize(worldNormal);
    vec3 v = normalize(eye - worldPosition);
    if (!gl_FrontFacing) n = -n;  // both sides of a surface are lit
    vec3 color = baseColor * mix(groundAmbient, skyAmbient, 0.5 + 0.5 * n.y);
    for (int i = 0; i < lightCount; ++i) {
        vec3 toLight = lightPosition[i] - worldPosition;
        float distance = length(toLight);
        vec3 l = toLight / distance;
        float nl = dot(n, l);
        if (nl <= 0.0) continue;
        float cone = smoothstep(lightConeOuter[i], lightConeInner[i], dot(-l, lightDirection[i]));
        if (cone <= 0.0) continue;
        float falloff = kReferenceDistance * kReferenceDistance / max(distance * distance, 1e-4);
        float shadow = lightShadowMap[i] >= 0 ? lit(lightShadowMap[i], n) : 1.0;
        vec3 h = normalize(l + v);
        float highlight = specular * pow(max(dot(n, h), 0.0), shininess);
        color += lightRadiance[i] * (cone * falloff * shadow) * (baseColor * nl + highlight);
    }
    vec3 mapped = vec3(1.0) - exp(-color * exposure);
    fragColor = vec4(pow(mapped, vec3(1.0 / kGamma)), 1.0);
}
)";

const char* const kShadowVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
uniform mat4 model;
uniform mat4 lightViewProjection;
void main() { gl_Position = lightViewProjection * model * vec4(position, 1.0); }
)";

const char* const kShadowFragmentShader = R"(#version 330 core
void main() {}
)";

// Positions are world space, or pixels for overlays (the matrix says which).
const char* const kLineVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 color;
uniform mat4 viewProjection;
out vec3 lineColor;
void main() {
    lineColor = color;
    gl_Position = viewProjection * vec4(position, 1.0);
}
)";

const char* const kLineFragmentShader = R"(#version 330 core
in vec3 lineColor;
out vec4 fragColor;
void main() { fragColor = vec4(lineColor, 1.0); }
)";

}  // namespace sorrel

#include "host/render/light_gizmos.h"

#include <cmath>
#include <vector>

namespace sorrel {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kStarRadius = 0.12;        // world units
constexpr double kConeLength = 0.6;         // world units
constexpr double kMarkerRadius = 0.32;      // world units
constexpr double kCrossRadius = 0.15;       // world units
constexpr double kShadowSquare = 0.22;      // world units, centre to corner
constexpr double kShadowLineOffset = 0.04;  // world units
constexpr int kCircleSegments = 24;
constexpr int kConeEdges = 4;
constexpr double kCursorRadius = 14.0;  // pixels
constexpr double kCursorGap = 4.0;      // pixels
constexpr double kCursorArm = 22.0;     // pixels

/// A circle about `centre` spanned by two unit axes.
std::vector<Vec3> circle(const Vec3& centre, const Vec3& a, const Vec3& b, double radius) {
    std::vector<Vec3> points;
    for (int i = 0; i < kCircleSegments; ++i) {
        const double angle = 2.0 * kPi * i / kCircleSegments;
        points.push_back(centre + a * (radius * std::cos(angle)) + b * (radius * std::sin(angle)));
    }
    return points;
}

/// Two unit axes square to `direction`.
void axesAcross(const Vec3& direction, Vec3& a, Vec3& b) {
    const Vec3 helper = std::fabs(direction.y) < 0.9 ? Vec3{0, 1, 0} : Vec3{1, 0, 0};
    a = normalizedOrZero(cross(direction, helper));
    b = cross(direction, a);
}

}  // namespace

void addLightGizmo(LineBatch& lines, const SceneLight& light) {
    const Vec3& p = light.position;
    const Vec3& color = light.properties.color;
    for (const Vec3& axis : {Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}})
        lines.add(p - axis * kStarRadius, p + axis * kStarRadius, color);

    Vec3 a, b;
    axesAcross(light.direction, a, b);
    const double halfAngle = light.properties.coneAngle * kPi / 360.0;
    const Vec3 rimCentre = p + light.direction * kConeLength;
    const std::vector<Vec3> rim =
        circle(rimCentre, a, b, kConeLength * std::tan(std::fmin(halfAngle, kPi / 3.0)));
    lines.addLoop(rim, color);
    for (int edge = 0; edge < kConeEdges; ++edge)
        lines.add(p, rim[edge * kCircleSegments / kConeEdges], color);
    lines.add(p, rimCentre, color);
}

void addManipulatorMarker(LineBatch& lines, const SceneLight& light, const Vec3& cameraRight,
                          const Vec3& cameraUp, const ManipulatorMarkerStyle& style) {
    const Vec3& p = light.position;
    lines.addLoop(circle(p, cameraRight, cameraUp, kMarkerRadius), kManipulatorColor);
    const Vec3 target = p + light.direction * light.centerOfInterest;
    lines.add(p, target, kManipulatorColor);
    const Vec3 handle = style.handleAtOrigin ? p : target;
    for (const Vec3& axis : {cameraRight, cameraUp})
        lines.add(handle - axis * kCrossRadius, handle + axis * kCrossRadius, kManipulatorColor);
    if (!style.shadowFallDistance) return;
    // Beside the line of aim, so that both show where they overlap.
    const Vec3 beside = cameraUp * kShadowLineOffset;
    const Vec3 fall = p + light.direction * *style.shadowFallDistance;
    lines.add(p + beside, fall + beside, kShadowHandleColor);
    Vec3 a, b;
    axesAcross(light.direction, a, b);
    lines.addLoop({fall + a * kShadowSquare, fall + b * kShadowSquare, fall - a * kShadowSquare,
                   fall - b * kShadowSquare},
                  kShadowHandleColor);
}

void addCursorMarker(LineBatch& lines, double x, double y) {
    const Vec3 centre{x, y, 0.0};
    lines.addLoop(circle(centre, {1, 0, 0}, {0, 1, 0}, kCursorRadius), kCursorColor);
    for (const Vec3& axis : {Vec3{1, 0, 0}, Vec3{0, 1, 0}}) {
        lines.add(centre + axis * kCursorGap, centre + axis * kCursorArm, kCursorColor);
        lines.add(centre - axis * kCursorGap, centre - axis * kCursorArm, kCursorColor);
    }
}

}  // namespace sorrel

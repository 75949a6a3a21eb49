#include "handles/handle_transform.h"

#include <cmath>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr int kTranslationRow = 3;
constexpr Vec3d kAxisZ = {0.0, 0.0, 1.0};

/// The general product, for values that are not all finite; kept out of line
/// so that the common way stays short.
[[gnu::noinline]] Mat4d generalProduct(const Vec3d& toCamera, const Vec3d& up, double scale,
                                       const Vec3d& position) {
    return multiply(multiply(rotationFromTo(kAxisZ, toCamera, up), scalingMatrix(scale)),
                    translationMatrix(position));
}

}  // namespace

Mat4d handleWorldMatrix(const Vec3d& toCamera, const Vec3d& up, double scale,
                        const Vec3d& position) {
    // From +z, the first factor of the rotation is the identity; the scaling
    // and the translation are diagonal and a row. In each of the general
    // product's sums every term but one is then a zero, as long as nothing is
    // infinite or NaN (0 times either is NaN, which the sums spread): what is
    // left is one product, and the first zero of each sum turns -0.0 into +0.0.
    const Axes turn = alignedAxes(toCamera, up);
    Mat4d world;
    // Only whether the sum is finite counts, so its order does not matter; a
    // sum that overflows only sends finite values the long way.
    double sum = 0.0;
    const auto scaleRow = [&world, &sum, scale](int r, const Vec3d& axis) {
        const double x = axis.x * scale;
        const double y = axis.y * scale;
        const double z = axis.z * scale;
        world[r][0] = x + 0.0;
        world[r][1] = y + 0.0;
        world[r][2] = z + 0.0;
        sum += x + y + z;
    };
    scaleRow(0, turn.x);
    scaleRow(1, turn.y);
    scaleRow(2, turn.z);
    double* const moved = world[kTranslationRow];
    moved[0] = position.x + 0.0;
    moved[1] = position.y + 0.0;
    moved[2] = position.z + 0.0;
    sum += moved[0] + moved[1] + moved[2];
    if (!std::isfinite(sum)) world = generalProduct(toCamera, up, scale, position);
    return world;
}

}  // namespace Tessera::Sorrel::ViewerUtils

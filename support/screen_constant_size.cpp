#include "support/screen_constant_size.h"

#include <algorithm>
#include <cstring>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

double sizeAt(std::int32_t width, std::int32_t height, const Mat4d& viewProjection,
              const Mat4d& unproject, const Vec3d& point, double size) {
    const Vec3d a = transformPoint(point, viewProjection);
    // Normalised device coordinates span 2 over a side: this moves size / 2 pixels.
    Vec3d b = a;
    if (width >= height)
        b.y += size / height;
    else
        b.x += size / width;
    return vectorLength(transformPoint(b, unproject) - transformPoint(a, unproject));
}

/// Bit for bit: -0.0 and +0.0 differ, and a NaN equals its own bits.
bool sameBits(const std::array<double, 16>& kept, const double* values) {
    return std::memcmp(kept.data(), values, sizeof kept) == 0;
}

}  // namespace

double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size) {
    const Mat4d viewProjection = multiply(view, projection);
    return sizeAt(width, height, viewProjection, inverse(viewProjection), point, size);
}

double ScreenConstantSizer::operator()(std::int32_t width, std::int32_t height,
                                       const double* viewValues, const double* projectionValues,
                                       const Vec3d& point, double size) {
    if (!valid || !sameBits(view, viewValues) || !sameBits(projection, projectionValues)) {
        std::copy_n(viewValues, kValues, view.begin());
        std::copy_n(projectionValues, kValues, projection.begin());
        viewProjection = multiply(Mat4d(viewValues), Mat4d(projectionValues));
        unproject = inverse(viewProjection);
        valid = true;
    }
    return sizeAt(width, height, viewProjection, unproject, point, size);
}

}  // namespace Tessera::Sorrel::ViewerUtils

#include "support/screen_constant_size.h"

namespace Tessera::Sorrel::ViewerUtils {

double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size) {
    const Mat4d viewProjection = multiply(view, projection);
    const Mat4d unproject = inverse(viewProjection);
    const Vec3d a = transformPoint(point, viewProjection);
    // Normalised device coordinates span 2 over a side: this moves size / 2 pixels.
    Vec3d b = a;
    if (width >= height)
        b.y += size / height;
    else
        b.x += size / width;
    return vectorLength(transformPoint(b, unproject) - transformPoint(a, unproject));
}

}  // namespace Tessera::Sorrel::ViewerUtils

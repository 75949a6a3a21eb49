#include "handles/handles_layer_support.h"

#include <GL/glew.h>

#include <cstring>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr float kByteScale = 255.0f;
constexpr std::uint64_t kByteMask = 0xff;
// Shifts of red, green, blue and alpha within the id's low 32 bits.
constexpr int kChannelShifts[4] = {24, 16, 8, 0};

/// (x, y, z, w) as (x / w, y / w, z / w).
Vec3d homogeneousToPoint(const double (&h)[4]) { return {h[0] / h[3], h[1] / h[3], h[2] / h[3]}; }

/// The point as the row vector (x, y, z, 1) times `m`, divided by w.
Vec3d transformPoint(const Vec3d& p, const Mat4d& m) {
    double h[4] = {};
    for (int c = 0; c < 4; ++c) h[c] = p.x * m[0][c] + p.y * m[1][c] + p.z * m[2][c] + m[3][c];
    return homogeneousToPoint(h);
}

}  // namespace

std::array<float, 4> pickIdColour(std::uint64_t id) {
    std::array<float, 4> colour{};
    for (int channel = 0; channel < 4; ++channel) {
        const auto byte = static_cast<float>((id >> kChannelShifts[channel]) & kByteMask);
        colour[channel] = byte / kByteScale;
    }
    return colour;
}

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

bool environmentFlagIsSet(const char* value) {
    return value != nullptr && std::strcmp(value, "1") == 0;
}

void buildHandlePrograms(const std::string& stem, GLShaderProgram& solid, GLShaderProgram& line) {
    // Both share the vertex and fragment files; lines add the geometry stage.
    solid.addShader(stem + ".vert", GL_VERTEX_SHADER);
    solid.addShader(stem + ".frag", GL_FRAGMENT_SHADER);
    solid.link();
    line.addShader(stem + ".vert", GL_VERTEX_SHADER);
    line.addShader(stem + ".geom", GL_GEOMETRY_SHADER);
    line.addShader(stem + ".frag", GL_FRAGMENT_SHADER);
    line.link();
}

}  // namespace Tessera::Sorrel::ViewerUtils

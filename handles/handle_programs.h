#pragma once
// Helpers of the centre-of-interest handles layer: the picking colour of an
// id, the screen-constant handle size, the reading of its environment flags,
// and the building of its two programs.

#include <array>
#include <cstdint>
#include <string>

#include "support/gl_shader_program.h"
#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// The picking colour of a pick id: bytes 3, 2, 1, 0 of its low 32 bits as red,
/// green, blue, alpha, each divided by 255 in floats.
std::array<float, 4> pickIdColour(std::uint64_t id);

/// The world length that spans `size` / 2 pixels along the shorter side of a
/// `width` x `height` pixel viewport, at the depth of the world point `point`.
/// `view` and `projection` are row-vector matrices; a singular product counts
/// as the identity. Along y for a square viewport.
double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size);

/// Whether an environment variable's value switches its flag on: exactly the
/// one-character text "1". Null (unset) is off.
bool environmentFlagIsSet(const char* value);

/// Builds the filled program from `stem` + ".vert" and ".frag" and the line
/// program from ".vert", ".geom" and ".frag", linking each. Failures are told
/// by GLShaderProgram and the work goes on. Needs a current GL context.
void buildHandlePrograms(const std::string& stem, GLShaderProgram& solid, GLShaderProgram& line);

}  // namespace Tessera::Sorrel::ViewerUtils

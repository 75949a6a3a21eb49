#pragma once
// The two programs of the centre-of-interest handles, built from one stem of
// shader file names.

#include <string>

#include "support/gl_shader_program.h"

namespace Tessera::Sorrel::ViewerUtils {

/// Builds the filled program from `stem` + ".vert" and ".frag" and the line
/// program from ".vert", ".geom" and ".frag", linking each. Failures are told
/// by GLShaderProgram and the work goes on. Needs a current GL context.
void buildHandlePrograms(const std::string& stem, GLShaderProgram& solid, GLShaderProgram& line);

}  // namespace Tessera::Sorrel::ViewerUtils

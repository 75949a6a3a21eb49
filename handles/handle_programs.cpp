#include "handles/handle_programs.h"

#include <GL/glew.h>

namespace Tessera::Sorrel::ViewerUtils {

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

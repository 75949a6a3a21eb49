#include "bench/support/gl_taken_out.h"

#include <GL/glew.h>

#include <cstring>
#include <string>
#include <vector>

namespace bench {

namespace {

/// Names handed out by glCreateProgram, glCreateShader and the glGen functions.
GLuint nextName = 1;

void generateNames(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) names[i] = nextName++;
}

/// One location for each distinct uniform name, in the order they are asked for.
GLint uniformLocation(GLuint, const GLchar* name) {
    static std::vector<std::string> known;
    for (std::size_t i = 0; i < known.size(); ++i)
        if (known[i] == name) return static_cast<GLint>(i);
    known.emplace_back(name);
    return static_cast<GLint>(known.size() - 1);
}

/// Shaders compile and programs link; no log and no attached shader is reported.
void objectParameter(GLuint, GLenum name, GLint* value) {
    const bool isStatus = name == GL_COMPILE_STATUS || name == GL_LINK_STATUS;
    *value = isStatus ? GL_TRUE : 0;
}

GLuint createObject() { return nextName++; }
GLuint createShader(GLenum) { return nextName++; }
GLboolean isVertexArray(GLuint name) { return name != 0 ? GL_TRUE : GL_FALSE; }

void noop1u(GLuint) {}
void noop2u(GLuint, GLuint) {}
void noopNames(GLsizei, const GLuint*) {}
void shaderSource(GLuint, GLsizei, const GLchar* const*, const GLint*) {}
void attachedShaders(GLuint, GLsizei, GLsizei* count, GLuint*) {
    if (count != nullptr) *count = 0;
}
void infoLog(GLuint, GLsizei, GLsizei* length, GLchar* log) {
    if (length != nullptr) *length = 0;
    if (log != nullptr) *log = '\0';
}
void bindBuffer(GLenum, GLuint) {}
void bufferData(GLenum, GLsizeiptr, const void*, GLenum) {}
void vertexAttribPointer(GLuint, GLint, GLenum, GLboolean, GLsizei, const void*) {}
void uniform1i(GLint, GLint) {}
void uniform1f(GLint, GLfloat) {}
void uniform2f(GLint, GLfloat, GLfloat) {}
void uniform4f(GLint, GLfloat, GLfloat, GLfloat, GLfloat) {}
void uniformMatrix4dv(GLint, GLsizei, GLboolean, const GLdouble*) {}

}  // namespace

void takeGLOut() {
    glCreateProgram = &createObject;
    glCreateShader = &createShader;
    glShaderSource = &shaderSource;
    glCompileShader = &noop1u;
    glGetShaderiv = &objectParameter;
    glGetShaderInfoLog = &infoLog;
    glAttachShader = &noop2u;
    glDeleteShader = &noop1u;
    glLinkProgram = &noop1u;
    glGetProgramiv = &objectParameter;
    glGetProgramInfoLog = &infoLog;
    glGetAttachedShaders = &attachedShaders;
    glDeleteProgram = &noop1u;
    glUseProgram = &noop1u;
    glGetUniformLocation = &uniformLocation;
    glUniform1i = &uniform1i;
    glUniform1f = &uniform1f;
    glUniform2f = &uniform2f;
    glUniform4f = &uniform4f;
    glUniformMatrix4dv = &uniformMatrix4dv;
    glGenVertexArrays = &generateNames;
    glBindVertexArray = &noop1u;
    glIsVertexArray = &isVertexArray;
    glDeleteVertexArrays = &noopNames;
    glGenBuffers = &generateNames;
    glBindBuffer = &bindBuffer;
    glBufferData = &bufferData;
    glDeleteBuffers = &noopNames;
    glVertexAttribPointer = &vertexAttribPointer;
    glEnableVertexAttribArray = &noop1u;
}

}  // namespace bench

// The OpenGL 1.1 functions the plugin calls, as no-ops; the executable's own
// definitions come before the driver's in every lookup.
extern "C" {

void glPushAttrib(GLbitfield) {}
void glPopAttrib() {}
void glEnable(GLenum) {}
void glDisable(GLenum) {}
void glBlendFunc(GLenum, GLenum) {}
void glClear(GLbitfield) {}
void glScissor(GLint, GLint, GLsizei, GLsizei) {}
void glLineWidth(GLfloat) {}
void glPointSize(GLfloat) {}
void glDrawElements(GLenum, GLsizei, GLenum, const void*) {}

}  // extern "C"

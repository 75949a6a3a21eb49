#include "host/render/gl_program.h"

#include <GL/glew.h>

#include <stdexcept>
#include <vector>

namespace sorrel {

namespace {

std::string infoLog(GLuint object, bool isProgram) {
    GLint length = 0;
    if (isProgram)
        glGetProgramiv(object, GL_INFO_LOG_LENGTH, &length);
    else
        glGetShaderiv(object, GL_INFO_LOG_LENGTH, &length);
    std::vector<char> log(static_cast<std::size_t>(length) + 1, '\0');
    if (isProgram)
        glGetProgramInfoLog(object, length, nullptr, log.data());
    else
        glGetShaderInfoLog(object, length, nullptr, log.data());
    return log.data();
}

GLuint compile(const std::string& name, GLenum stage, const char* source) {
    const GLuint shader = glCreateShader(stage);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled != GL_TRUE) {
        const std::string log = infoLog(shader, false);
        glDeleteShader(shader);
        throw std::runtime_error(name + ": the " +
                                 (stage == GL_VERTEX_SHADER ? "vertex" : "fragment") +
                                 " shader did not compile: " + log);
    }
    return shader;
}

}  // namespace

GLProgram::GLProgram(const std::string& name, const char* vertexSource, const char* fragmentSource)
    : name_(name) {
    const GLuint vertex = compile(name, GL_VERTEX_SHADER, vertexSource);
    GLuint fragment = 0;
    try {
        fragment = compile(name, GL_FRAGMENT_SHADER, fragmentSource);
    } catch (...) {
        glDeleteShader(vertex);
        throw;
    }
    program_ = glCreateProgram();
    glAttachShader(program_, vertex);
    glAttachShader(program_, fragment);
    glLinkProgram(program_);
    // The program keeps what it linked; the shader objects can go.
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    GLint linked = GL_FALSE;
    glGetProgramiv(program_, GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE) {
        const std::string log = infoLog(program_, true);
        glDeleteProgram(program_);
        throw std::runtime_error(name + ": the program did not link: " + log);
    }
}

GLProgram::~GLProgram() { glDeleteProgram(program_); }

void GLProgram::use() const { glUseProgram(program_); }

int GLProgram::location(const std::string& name) const {
    const auto found = locations_.find(name);
    if (found != locations_.end()) return found->second;
    const int location = glGetUniformLocation(program_, name.c_str());
    locations_.emplace(name, location);
    return location;
}

void GLProgram::set(const std::string& name, int value) const {
    glProgramUniform1i(program_, location(name), value);
}

void GLProgram::set(const std::string& name, float value) const {
    glProgramUniform1f(program_, location(name), value);
}

void GLProgram::set(const std::string& name, const Vec3& value) const {
    glProgramUniform3f(program_, location(name), static_cast<float>(value.x),
                       static_cast<float>(value.y), static_cast<float>(value.z));
}

void GLProgram::set(const std::string& name, const Matrix& value) const {
    float values[16];
    for (int i = 0; i < 16; ++i) values[i] = static_cast<float>(value[i]);
    glProgramUniformMatrix4fv(program_, location(name), 1, GL_FALSE, values);
}

}  // namespace sorrel

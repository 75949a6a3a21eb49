#include "support/gl_shader_program.h"

#include <GL/glew.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

namespace {

constexpr const char* kPrefix = "[ GLShaderProgram ] ";
constexpr GLint kAbsentUniform = -1;

/// The file's text, or the empty text when it cannot be opened.
std::string loadFile(const std::string& path) {
    std::ifstream file(path, std::ios::in);
    if (!file.is_open()) {
        std::cerr << kPrefix << "Could not load shader from file '" << path << "'.\n";
        return {};
    }
    std::stringstream text;
    text << file.rdbuf();
    // A failed close only sets the stream's fail bit; the text stands.
    file.close();
    return text.str();
}

}  // namespace

GLShaderProgram::~GLShaderProgram() { cleanup(); }

void GLShaderProgram::addShader(const std::string& path, unsigned int shaderType) {
    // An unreadable file still goes through the compiler, which reports on it.
    compile(loadFile(path), path, shaderType);
}

void GLShaderProgram::compile(const std::string& text, const std::string& path,
                              unsigned int shaderType) {
    if (program == 0) program = glCreateProgram();
    const GLuint shader = glCreateShader(shaderType);
    if (shader == 0) {
        std::cerr << kPrefix << "Error creating GL shader '" << path << "'\n";
        return;
    }
    const GLchar* source = text.c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled != GL_FALSE) {
        // The shader lives on, attached, until cleanup.
        glAttachShader(program, shader);
        return;
    }

    std::cerr << kPrefix << "Compilation of shader '" << path << "' failed!\n";
    GLint logLength = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &logLength);
    if (logLength > 0) {
        std::vector<GLchar> log(static_cast<std::size_t>(logLength), '\0');
        glGetShaderInfoLog(shader, logLength, nullptr, log.data());
        std::cerr << kPrefix << "Shader compile log:\n" << log.data() << "\n";
    }
    glDeleteShader(shader);
}

void GLShaderProgram::link() {
    if (linked && program != 0) return;
    glLinkProgram(program);
    GLint status = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    if (status != GL_FALSE) {
        linked = true;
        // Locations of an earlier link are void.
        forgetLocations();
        return;
    }

    GLint logLength = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &logLength);
    if (logLength < 1) {
        std::cerr << kPrefix << "Failed to link shader program\n";
        return;
    }
    std::vector<GLchar> log(static_cast<std::size_t>(logLength), '\0');
    glGetProgramInfoLog(program, logLength, nullptr, log.data());
    std::cerr << kPrefix << "Failed to link shader program:\n " << log.data();
}

void GLShaderProgram::use() {
    if (!linked || program == 0) {
        std::cerr << kPrefix << "Cannot use shader program because it is invalid.\n";
        return;
    }
    glUseProgram(program);
}

void GLShaderProgram::cleanup() {
    if (program != 0) {
        GLint attachedCount = 0;
        glGetProgramiv(program, GL_ATTACHED_SHADERS, &attachedCount);
        std::vector<GLuint> shaders(static_cast<std::size_t>(std::max(attachedCount, 0)));
        glGetAttachedShaders(program, attachedCount, nullptr, shaders.data());
        // Deleting the program detaches them, which lets GL free them.
        for (const GLuint shader : shaders) glDeleteShader(shader);
        glDeleteProgram(program);
        program = 0;
    }
    linked = false;
    forgetLocations();
}

GLShaderProgram::Uniform GLShaderProgram::uniform(const std::string& name) {
    // Up to the first NUL, as GL would read the name.
    const char* const key = name.c_str();
    for (std::size_t index = 0; index < uniforms.size(); ++index)
        if (uniforms[index].name == key) return {index};
    uniforms.push_back({key});
    return {uniforms.size() - 1};
}

void GLShaderProgram::forgetLocations() {
    for (UniformEntry& entry : uniforms) entry.known = false;
}

int GLShaderProgram::location(Uniform uniform) {
    UniformEntry& entry = uniforms[uniform.index];
    if (!entry.known) {
        entry.location = glGetUniformLocation(program, entry.name.c_str());
        entry.known = true;
    }
    return entry.location;
}

void GLShaderProgram::setUniform(Uniform uniform, int value) {
    if (const GLint at = location(uniform); at != kAbsentUniform) glUniform1i(at, value);
}

void GLShaderProgram::setUniform(Uniform uniform, float value) {
    if (const GLint at = location(uniform); at != kAbsentUniform) glUniform1f(at, value);
}

void GLShaderProgram::setUniform(Uniform uniform, float x, float y) {
    if (const GLint at = location(uniform); at != kAbsentUniform) glUniform2f(at, x, y);
}

void GLShaderProgram::setUniform(Uniform uniform, float x, float y, float z, float w) {
    if (const GLint at = location(uniform); at != kAbsentUniform) glUniform4f(at, x, y, z, w);
}

void GLShaderProgram::setUniform(Uniform uniform, const double* matrix) {
    if (const GLint at = location(uniform); at != kAbsentUniform) {
        glUniformMatrix4dv(at, /* count = */ 1, GL_FALSE, matrix);
    }
}

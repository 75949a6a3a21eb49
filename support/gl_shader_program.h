#pragma once
// GLShaderProgram: one GL program object built from shader files, with a cache
// of uniform locations. Every failure is told on std::cerr and the object stays
// usable; nothing throws.

#include <map>
#include <string>

class GLShaderProgram {
public:
    GLShaderProgram() = default;
    /// Deletes the GL objects, so a context must be current if any exist.
    ~GLShaderProgram();
    GLShaderProgram(const GLShaderProgram&) = delete;
    GLShaderProgram& operator=(const GLShaderProgram&) = delete;

    /// Loads the file at `path`, compiles it as a stage of `shaderType`
    /// (GL_VERTEX_SHADER, GL_GEOMETRY_SHADER, GL_FRAGMENT_SHADER) and attaches
    /// it. The program object is made with the first stage.
    void addShader(const std::string& path, unsigned int shaderType);
    /// Links once; later calls after a success do nothing.
    void link();
    /// Makes the program current, or reports that it is not linked.
    void use();
    /// Deletes the program and its attached shaders and forgets the locations.
    void cleanup();

    // Uniforms by name; a name the program lacks is asked for once and then skipped.
    void setUniform(const std::string& name, int value);
    void setUniform(const std::string& name, float value);
    void setUniform(const std::string& name, float x, float y);
    void setUniform(const std::string& name, float x, float y, float z, float w);
    /// Sixteen doubles, handed to GL untransposed.
    void setUniform(const std::string& name, const double* matrix);

    /// The GL program name; 0 when there is no program object.
    unsigned int id() const { return program; }
    bool isLinked() const { return linked; }

private:
    void compile(const std::string& text, const std::string& path, unsigned int shaderType);
    /// The cached location of `name`, asking GL on the first request.
    int location(const std::string& name);

    unsigned int program = 0;
    bool linked = false;
    // -1 is stored like any other location, so an absent uniform costs GL one
    // question per link.
    std::map<std::string, int> uniformLocations;
};

#pragma once
// GLShaderProgram: one GL program object built from shader files, with a cache
// of uniform locations. Every failure is told on std::cerr and the object stays
// usable; nothing throws.

#include <cstddef>
#include <string>
#include <vector>

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

    /// A uniform by its place in this program's table of names: what a caller
    /// that sets the same uniform often keeps, so that no name is compared again.
    struct Uniform {
        std::size_t index = 0;
    };
    /// Enters `name` (up to its first NUL) in the table, or finds it there. GL
    /// is not asked: a location is asked for when the uniform is first set.
    Uniform uniform(const std::string& name);

    // A uniform the program lacks is asked for once per link and then skipped.
    void setUniform(Uniform uniform, int value);
    void setUniform(Uniform uniform, float value);
    void setUniform(Uniform uniform, float x, float y);
    void setUniform(Uniform uniform, float x, float y, float z, float w);
    /// Sixteen doubles, handed to GL untransposed.
    void setUniform(Uniform uniform, const double* matrix);

    // The same by name.
    template <typename... Values>
    void setUniform(const std::string& name, Values... values) {
        setUniform(uniform(name), values...);
    }

    /// The GL program name; 0 when there is no program object.
    unsigned int id() const { return program; }
    bool isLinked() const { return linked; }

private:
    void compile(const std::string& text, const std::string& path, unsigned int shaderType);
    /// The cached location of a uniform, asking GL on the first request.
    int location(Uniform uniform);
    /// Every location is to be asked for again.
    void forgetLocations();

    struct UniformEntry {
        std::string name;
        // -1 is kept like any other location, so an absent uniform costs GL
        // one question per link.
        int location = 0;
        bool known = false;
    };

    unsigned int program = 0;
    bool linked = false;
    std::vector<UniformEntry> uniforms;
};

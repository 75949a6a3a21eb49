#pragma once
// A GL program of the host's own, linked from GLSL sources held in the
// binary, with its uniforms looked up by name once. The object owns the
// program: the context it was made in must be current when it is destroyed.

#include <map>
#include <string>

#include "host/viewer/matrix.h"
#include "host/viewer/vec3.h"

namespace sorrel {

class GLProgram {
public:
    /// Compiles and links; throws std::runtime_error naming `name` and
    /// carrying the compiler's log when a stage or the link fails.
    GLProgram(const std::string& name, const char* vertexSource, const char* fragmentSource);
    ~GLProgram();
    GLProgram(const GLProgram&) = delete;
    GLProgram& operator=(const GLProgram&) = delete;

    void use() const;
    unsigned int id() const { return program_; }

    // Uniforms by name; a name the program lacks (or optimised away) is skipped.
    void set(const std::string& name, int value) const;
    void set(const std::string& name, float value) const;
    void set(const std::string& name, const Vec3& value) const;
    /// A host matrix (row vectors), which GL reads as its column-vector transpose.
    void set(const std::string& name, const Matrix& value) const;

private:
    int location(const std::string& name) const;

    std::string name_;
    unsigned int program_ = 0;
    mutable std::map<std::string, int> locations_;
};

}  // namespace sorrel

#pragma once
// Coloured line segments gathered on the CPU and drawn in one call: gizmos,
// markers and overlays. The object owns its GL names: the context it was
// made in must be current when it is destroyed.

#include <vector>

#include "host/viewer/vec3.h"

namespace sorrel {

class LineBatch {
public:
    LineBatch();
    ~LineBatch();
    LineBatch(const LineBatch&) = delete;
    LineBatch& operator=(const LineBatch&) = delete;

    /// One segment from `a` to `b` in one colour (linear red, green, blue).
    void add(const Vec3& a, const Vec3& b, const Vec3& color);
    /// A closed polygon through `points`.
    void addLoop(const std::vector<Vec3>& points, const Vec3& color);
    bool empty() const { return vertices_.empty(); }
    void clear() { vertices_.clear(); }

    /// Uploads what was added and draws it as lines with the current program;
    /// attribute 0 is the position, 1 the colour.
    void draw();

private:
    std::vector<float> vertices_;
    unsigned int vertexArray_ = 0;
    unsigned int buffer_ = 0;
};

}  // namespace sorrel

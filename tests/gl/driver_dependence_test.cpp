// The one driver behaviour the handle shaders depend on. Mesa's llvmpipe smooths
// a line behind a geometry stage by adding an output one location past the
// fragment stage's last input; after a program's first smoothed draw it lays the
// vertices out without it, so every later draw reads shifted vertices, unless
// the geometry stage already writes that location. Manipulators.geom keeps the
// slot (named for transform feedback, or the linker drops it); this tells when a
// driver no longer needs it.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "handles/handle_mesh.h"
#include "handles/handle_mesh_data.h"
#include "support/gl_shader_program.h"
#include "tests/gl/gl_test.h"
#include "tests/support/temp_folder.h"

namespace {

using gl_testing::kSurfaceSize;

/// Two vertical lines, drawn one after the other, in normalised device coordinates.
constexpr float kLineX[2] = {-0.5f, 0.5f};
/// Pixels that smoothing may add beside a line.
constexpr double kReach = 2.0;

struct Coverage {
    int lit[2] = {0, 0};  // pixels within reach of each line
    int stray = 0;        // lit pixels near neither
};

class DriverDependence : public gl_testing::GLTest {};

TEST_F(DriverDependence, SmoothedLinesBehindAGeometryStageNeedTheSlotTheHandleShadersKeep) {
    const char* const vertex = R"(layout(location = 0) in vec3 position;
        void main() { gl_Position = vec4(position, 1.0); })";
    const char* const geometry = R"(layout(lines) in;
        layout(line_strip, max_vertices = 2) out;
        SLOT out vec4 slot;
        void main() {
            for (int i = 0; i < 2; ++i) {
                gl_Position = gl_in[i].gl_Position;
                slot = vec4(0.0);
                EmitVertex();
            }
        })";
    const char* const fragment = R"(out vec4 fragmentColor;
        void main() { fragmentColor = vec4(1.0); })";
    const testing_support::TempFolder folder;
    const auto drawnWith = [&](const std::string& slot) {
        const std::string header = "#version 440 core\n#define SLOT " + slot + "\n";
        GLShaderProgram program;
        program.addShader(folder.write("plain.vert", header + vertex), GL_VERTEX_SHADER);
        program.addShader(folder.write("plain.geom", header + geometry), GL_GEOMETRY_SHADER);
        program.addShader(folder.write("plain.frag", header + fragment), GL_FRAGMENT_SHADER);
        program.link();
        program.use();
        HandleMesh line;
        const HandleMeshData data = connectorLineData();
        line.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
        glClear(GL_COLOR_BUFFER_BIT);
        glEnable(GL_LINE_SMOOTH);
        for (const float x : kLineX) {
            line.updatePositions({Float3{x, -0.5f, 0.0f}, Float3{x, 0.5f, 0.0f}});
            line.drawLines(/* blend = */ true);
        }
        glDisable(GL_LINE_SMOOTH);
        glUseProgram(0);

        Coverage seen;
        const sorrel::RgbaImage image = readPixels();
        for (int row = 0; row < kSurfaceSize; ++row) {
            for (int column = 0; column < kSurfaceSize; ++column) {
                if (image.at(column, row)[3] == 0) continue;
                bool near = false;
                for (int i = 0; i < 2; ++i) {
                    const double lineColumn = (kLineX[i] + 1.0) / 2.0 * kSurfaceSize;
                    if (std::abs(column + 0.5 - lineColumn) <= kReach) {
                        ++seen.lit[i];
                        near = true;
                    }
                }
                seen.stray += near ? 0 : 1;
            }
        }
        return seen;
    };

    const Coverage kept = drawnWith("layout(location = 0, xfb_buffer = 0, xfb_offset = 0)");
    EXPECT_GT(kept.lit[0], 0);
    EXPECT_GT(kept.lit[1], 0) << "with the slot kept, every draw comes out right";
    EXPECT_EQ(kept.stray, 0);
    const Coverage lost = drawnWith("");
    EXPECT_GT(lost.lit[0], 0) << "a program's first draw comes out right";
    if (lost.lit[1] > 0 && lost.stray == 0)
        GTEST_SKIP() << "this driver draws them all: the slot that Manipulators.geom keeps is "
                        "no longer needed";
}

}  // namespace

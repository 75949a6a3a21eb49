// GLShaderProgram against llvmpipe: what it tells on std::cerr, which GL calls
// it makes, and the shipped handle shaders.

#include "support/gl_shader_program.h"

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/gl_test.h"

using testing::ElementsAre;
using testing::StartsWith;

namespace {

constexpr const char* kInvalid =
    "[ GLShaderProgram ] Cannot use shader program because it is invalid.\n";

const char* const kVertexSource = R"(#version 400 core
layout(location = 0) in vec3 position;
uniform float present;
void main() { gl_Position = vec4(position * present, 1.0); }
)";

std::string captured(const std::function<void()>& work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

class ShaderProgram : public gl_testing::GLTest {
protected:
    /// A program of a vertex stage alone that links and reads "present".
    void buildSimple() {
        program.addShader(gl_testing::writeTempFile("simple.vert", kVertexSource),
                          GL_VERTEX_SHADER);
        program.link();
    }
    void TearDown() override {
        glUseProgram(0);
        GLTest::TearDown();
    }
    GLShaderProgram program;
};

TEST_F(ShaderProgram, LinksOnceAsksEachLocationOncePerLinkAndCleanupDeletesItsStages) {
    EXPECT_EQ(captured([&] { buildSimple(); }), "");
    ASSERT_TRUE(program.isLinked());
    const GLuint name = program.id();
    const GLint present = glGetUniformLocation(name, "present");
    const auto calls = recordGLCalls([&] {
        program.link();
        program.use();
        for (int i = 0; i < 3; ++i) program.setUniform("absent", 1);
        program.setUniform("present", 2.0f);
        program.setUniform("present", 3.0f);
    });
    EXPECT_THAT(
        calls,
        ElementsAre(glCall("glUseProgram", name), glCall("glGetUniformLocation", name),
                    glCall("glGetUniformLocation", name), glCall("glUniform1f", present, 2.0f),
                    glCall("glUniform1f", present, 3.0f)));

    GLuint stage = 0;
    glGetAttachedShaders(name, 1, nullptr, &stage);
    glUseProgram(0);
    const auto cleanup = recordGLCalls([&] { program.cleanup(); });
    EXPECT_THAT(cleanup,
                ElementsAre(glCall("glGetProgramiv", name, GL_ATTACHED_SHADERS),
                            glCall("glGetAttachedShaders", name, 1),
                            glCall("glDeleteShader", stage), glCall("glDeleteProgram", name)));

    // A new build links anew and forgets the old locations.
    buildSimple();
    program.use();
    EXPECT_EQ(
        countCalls(recordGLCalls([&] { program.setUniform("absent", 1); }), "glGetUniformLocation"),
        1);
}

TEST_F(ShaderProgram, FailuresAreReportedAndCleanupStillDeletesEverything) {
    std::string messages;
    const auto fresh = recordGLCalls([&] {
        messages = captured([&] {
            program.use();
            program.use();
            program.cleanup();
        });
    });
    EXPECT_TRUE(fresh.empty()) << "a fresh program calls no GL";
    EXPECT_EQ(messages, std::string(kInvalid) + kInvalid) << "each use is reported";

    const std::string missing = "/nonexistent/Manipulators.vert";
    // The missing file is still compiled, as empty text, on a program made for it.
    messages = captured([&] { program.addShader(missing, GL_VERTEX_SHADER); });
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Could not load shader from file '" +
                                     missing + "'.\n[ GLShaderProgram ] Compilation of shader '" +
                                     missing + "' failed!\n"));
    const GLuint name = program.id();
    ASSERT_NE(name, 0u);

    const std::string broken = gl_testing::writeTempFile("broken.frag", "#version 400 core\nvoid");
    messages = captured([&] { program.addShader(broken, GL_FRAGMENT_SHADER); });
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Compilation of shader '" + broken +
                                     "' failed!\n[ GLShaderProgram ] Shader compile log:\n"));
    constexpr unsigned int kNotAShaderType = 0x1234;  // GL makes no shader of it
    messages = captured([&] { program.addShader(broken, kNotAShaderType); });
    EXPECT_EQ(messages, "[ GLShaderProgram ] Error creating GL shader '" + broken + "'\n");
    glGetError();  // the invalid enum of that request
    GLint attached = -1;
    glGetProgramiv(name, GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 0) << "failed stages are not attached";
    EXPECT_EQ(program.id(), name) << "one program object for all stages";

    // Two bodies of main in one stage cannot link.
    const std::string twice = gl_testing::writeTempFile("twice.vert", kVertexSource);
    messages = captured([&] {
        program.addShader(twice, GL_VERTEX_SHADER);
        program.addShader(twice, GL_VERTEX_SHADER);
        program.link();
    });
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Failed to link shader program:\n "));
    EXPECT_FALSE(program.isLinked());
    const auto cleanup = recordGLCalls([&] { program.cleanup(); });
    EXPECT_EQ(countCalls(cleanup, "glDeleteShader"), 2);
    EXPECT_EQ(cleanup.back(), glCall("glDeleteProgram", name));
}

TEST_F(ShaderProgram, HandleShadersLinkSilentlyAndDeclareTheirUniforms) {
    GLShaderProgram solid;
    GLShaderProgram line;
    EXPECT_EQ(captured([&] { gl_testing::buildHandlePrograms(solid, line); }), "");
    ASSERT_TRUE(solid.isLinked() && line.isLinked());
    for (const char* name : {"worldMatrix", "viewMatrix", "projectionMatrix", "mode", "color"})
        EXPECT_NE(glGetUniformLocation(solid.id(), name), -1) << name;
    for (const char* name : {"viewportSize", "pattern", "factor"})
        EXPECT_NE(glGetUniformLocation(line.id(), name), -1) << name;
}

}  // namespace

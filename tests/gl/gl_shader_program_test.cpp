// GLShaderProgram against llvmpipe: what it tells on std::cerr, which GL calls
// it makes, and the shipped handle shaders.

#include "support/gl_shader_program.h"

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/gl_test.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ShaderProgram : public gl_testing::GLTest {};

const char* const kVertexSource = R"(#version 400 core
layout(location = 0) in vec3 position;
uniform float present;
void main() { gl_Position = vec4(position * present, 1.0); }
)";

const char* const kFragmentSource = R"(#version 400 core
uniform float present;
out vec4 fragmentColor;
void main() { fragmentColor = vec4(present); }
)";

/// A program of a vertex and a fragment stage that links; both read "present".
void buildSimple(GLShaderProgram& program) {
    program.addShader(gl_testing::writeTempFile("simple.vert", kVertexSource), GL_VERTEX_SHADER);
    program.addShader(gl_testing::writeTempFile("simple.frag", kFragmentSource),
                      GL_FRAGMENT_SHADER);
    program.link();
}

std::string captured(const std::function<void()>& work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

TEST_F(ShaderProgram, FreshProgramCallsNoGLAndReportsEachUse) {
    GLShaderProgram program;
    std::string messages;
    const auto calls = recordGLCalls([&] {
        messages = captured([&] {
            program.use();
            program.use();
            program.cleanup();
        });
    });
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(messages,
              "[ GLShaderProgram ] Cannot use shader program because it is invalid.\n"
              "[ GLShaderProgram ] Cannot use shader program because it is invalid.\n");
}

TEST_F(ShaderProgram, LinksOnceAndCleanupDeletesItsStages) {
    GLShaderProgram program;
    const std::string messages = captured([&] { buildSimple(program); });
    EXPECT_EQ(messages, "");
    ASSERT_TRUE(program.isLinked());
    const GLuint name = program.id();

    const auto again = recordGLCalls([&] {
        program.link();
        program.use();
    });
    EXPECT_THAT(again, ElementsAre(glCall("glUseProgram", name)));

    GLuint stages[2] = {};
    glGetAttachedShaders(name, 2, nullptr, stages);
    glUseProgram(0);
    const auto cleanup = recordGLCalls([&] { program.cleanup(); });
    EXPECT_THAT(callNames(cleanup),
                ElementsAre("glGetProgramiv", "glGetAttachedShaders", "glDeleteShader",
                            "glDeleteShader", "glDeleteProgram"));
    EXPECT_EQ(cleanup[2], glCall("glDeleteShader", stages[0]));
    EXPECT_EQ(cleanup[3], glCall("glDeleteShader", stages[1]));
    EXPECT_FALSE(glIsProgram(name));
    EXPECT_FALSE(glIsShader(stages[0]) || glIsShader(stages[1])) << "the stages were freed";
    EXPECT_EQ(program.id(), 0u);
    EXPECT_FALSE(program.isLinked());
}

TEST_F(ShaderProgram, FailedLinkReportsAndCleanupStillDeletesEverything) {
    GLShaderProgram program;
    // Two bodies of main in one stage cannot link.
    const std::string path = gl_testing::writeTempFile("twice.vert", kVertexSource);
    const std::string messages = captured([&] {
        program.addShader(path, GL_VERTEX_SHADER);
        program.addShader(path, GL_VERTEX_SHADER);
        program.link();
        program.use();
    });
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Failed to link shader program:\n "));
    EXPECT_THAT(messages, HasSubstr("[ GLShaderProgram ] Cannot use shader program because it is "
                                    "invalid.\n"));
    EXPECT_FALSE(program.isLinked());

    const GLuint name = program.id();
    ASSERT_NE(name, 0u);
    const auto calls = recordGLCalls([&] { program.cleanup(); });
    EXPECT_EQ(countCalls(calls, "glDeleteShader"), 2);
    EXPECT_EQ(calls.back(), glCall("glDeleteProgram", name));
    EXPECT_FALSE(glIsProgram(name));
}

TEST_F(ShaderProgram, FailingStagesAreReportedAndDropped) {
    GLShaderProgram program;
    const std::string missing = "/nonexistent/Manipulators.vert";
    std::string messages;
    const auto calls = recordGLCalls(
        [&] { messages = captured([&] { program.addShader(missing, GL_VERTEX_SHADER); }); });
    // The missing file is still compiled, as empty text, on a program made for it.
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Could not load shader from file '" +
                                     missing + "'.\n"));
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(calls[0].name, "glCreateProgram");
    EXPECT_EQ(calls[1], glCall("glCreateShader", GL_VERTEX_SHADER));
    EXPECT_EQ(calls[2].name, "glShaderSource");
    EXPECT_EQ(calls[3].name, "glCompileShader");
    const GLuint name = program.id();
    EXPECT_NE(name, 0u);

    const std::string broken = gl_testing::writeTempFile("broken.frag", "#version 400 core\nvoid");
    messages = captured([&] { program.addShader(broken, GL_FRAGMENT_SHADER); });
    EXPECT_THAT(messages, StartsWith("[ GLShaderProgram ] Compilation of shader '" + broken +
                                     "' failed!\n[ GLShaderProgram ] Shader compile log:\n"));
    EXPECT_EQ(messages.back(), '\n');

    // GL makes no shader of an unknown kind.
    constexpr unsigned int kNotAShaderType = 0x1234;
    messages = captured([&] { program.addShader(broken, kNotAShaderType); });
    EXPECT_EQ(messages, "[ GLShaderProgram ] Error creating GL shader '" + broken + "'\n");
    glGetError();  // the invalid enum of that request

    GLint attached = -1;
    glGetProgramiv(name, GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 0) << "failed stages are not attached";
    EXPECT_EQ(program.id(), name) << "one program object for all stages";
}

TEST_F(ShaderProgram, UniformLocationsAreAskedOncePerLink) {
    GLShaderProgram program;
    buildSimple(program);
    program.use();
    const auto calls = recordGLCalls([&] {
        for (int i = 0; i < 3; ++i) program.setUniform("absent", 1);
        program.setUniform("present", 2.0f);
        program.setUniform("present", 3.0f);
    });
    EXPECT_THAT(callNames(calls), ElementsAre("glGetUniformLocation", "glGetUniformLocation",
                                              "glUniform1f", "glUniform1f"));
    const GLint present = glGetUniformLocation(program.id(), "present");
    EXPECT_EQ(calls.back(), glCall("glUniform1f", present, 3.0f));

    // A new build forgets the old locations.
    program.cleanup();
    buildSimple(program);
    program.use();
    const auto rebuilt = recordGLCalls([&] { program.setUniform("absent", 1); });
    EXPECT_EQ(countCalls(rebuilt, "glGetUniformLocation"), 1);
    glUseProgram(0);
}

TEST_F(ShaderProgram, HandleShadersLinkSilentlyAndDeclareTheirUniforms) {
    GLShaderProgram solid;
    GLShaderProgram line;
    EXPECT_EQ(captured([&] { gl_testing::buildHandlePrograms(solid, line); }), "");
    ASSERT_TRUE(solid.isLinked() && line.isLinked());

    for (const char* name : {"worldMatrix", "viewMatrix", "projectionMatrix", "mode", "color"}) {
        EXPECT_NE(glGetUniformLocation(solid.id(), name), -1) << name;
    }
    for (const char* name : {"viewportSize", "pattern", "factor"}) {
        EXPECT_NE(glGetUniformLocation(line.id(), name), -1) << name;
    }
}

}  // namespace

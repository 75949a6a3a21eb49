// GLShaderProgram against llvmpipe: what it tells on std::cerr and which GL
// calls it makes.

#include "support/gl_shader_program.h"

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/gl_test.h"
#include "tests/support/temp_folder.h"

using testing::StartsWith;

namespace {

constexpr const char* kPrefix = "[ GLShaderProgram ] ";
constexpr const char* kInvalid =
    "[ GLShaderProgram ] Cannot use shader program because it is invalid.\n";

const char* const kVertexSource = R"(#version 400 core
layout(location = 0) in vec3 position;
void main() { gl_Position = vec4(position, 1.0); }
)";

std::string captured(const std::function<void()>& work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

/// What the driver itself says when it compiles `source` as a stage of `type`.
std::string compileLog(const std::string& source, GLenum type) {
    const GLuint shader = glCreateShader(type);
    const char* text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    std::string log(static_cast<std::size_t>(length), '\0');
    glGetShaderInfoLog(shader, length, nullptr, log.data());
    glDeleteShader(shader);
    return log.c_str();
}

class ShaderProgram : public gl_testing::GLTest {
protected:
    void TearDown() override {
        glUseProgram(0);
        GLTest::TearDown();
    }
    const testing_support::TempFolder folder;
    GLShaderProgram program;
};

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

    const std::string brokenSource = "#version 400 core\nvoid";
    const std::string broken = folder.write("broken.frag", brokenSource);
    messages = captured([&] { program.addShader(broken, GL_FRAGMENT_SHADER); });
    EXPECT_EQ(messages, kPrefix + ("Compilation of shader '" + broken + "' failed!\n") + kPrefix +
                            "Shader compile log:\n" + compileLog(brokenSource, GL_FRAGMENT_SHADER) +
                            "\n");
    constexpr unsigned int kNotAShaderType = 0x1234;  // GL makes no shader of it
    messages = captured([&] { program.addShader(broken, kNotAShaderType); });
    EXPECT_EQ(messages, "[ GLShaderProgram ] Error creating GL shader '" + broken + "'\n");
    glGetError();  // the invalid enum of that request
    GLint attached = -1;
    glGetProgramiv(name, GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 0) << "failed stages are not attached";
    EXPECT_EQ(program.id(), name) << "one program object for all stages";

    // Two bodies of main in one stage cannot link.
    const std::string twice = folder.write("twice.vert", kVertexSource);
    messages = captured([&] {
        program.addShader(twice, GL_VERTEX_SHADER);
        program.addShader(twice, GL_VERTEX_SHADER);
        program.link();
    });
    GLint length = 0;
    glGetProgramiv(name, GL_INFO_LOG_LENGTH, &length);
    std::string log(static_cast<std::size_t>(length), '\0');
    glGetProgramInfoLog(name, length, nullptr, log.data());
    EXPECT_EQ(messages, kPrefix + std::string("Failed to link shader program:\n ") + log.c_str());
    EXPECT_FALSE(program.isLinked());
    const auto cleanup = recordGLCalls([&] { program.cleanup(); });
    EXPECT_EQ(countCalls(cleanup, "glDeleteShader"), 2);
    EXPECT_EQ(cleanup.back(), glCall("glDeleteProgram", name));
}

TEST_F(ShaderProgram, LinkingWithoutAnyStageIsReportedWithoutALog) {
    EXPECT_EQ(captured([&] { program.link(); }),
              "[ GLShaderProgram ] Failed to link shader program\n");
    EXPECT_FALSE(program.isLinked());
    // Program 0 is an invalid value to GL.
    while (glGetError() != GL_NO_ERROR) {
    }
}

}  // namespace

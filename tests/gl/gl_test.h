#pragma once
// GL tests: one headless context per test suite, cleared before each test; a
// test that fails leaves the picture it saw under the temporary directory. Each
// ends with the attribute reference balance it began with.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/viewer/gl_context.h"
#include "support/gl_shader_program.h"
#include "tests/support/reference_balance.h"

namespace gl_testing {

/// Width and height of the test surface, in pixels.
constexpr int kSurfaceSize = 128;

/// The shader file stem of the handles, as the handles layer forms it.
std::string manipulatorShaderStem();

/// Builds the handles layer's two programs from the shipped files, as its setup does.
void buildHandlePrograms(GLShaderProgram& solid, GLShaderProgram& line);

/// Writes `text` to a file of that `name` in the temporary directory; returns its path.
std::string writeTempFile(const std::string& name, const std::string& text);

class GLTest : public testing_support::ReferenceBalanceTest {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    static sorrel::RgbaImage readPixels() { return context->readPixels(); }
    /// The suite's context, for the host's own offscreen passes.
    static const sorrel::GLContext& glContext() { return *context; }

private:
    static inline std::unique_ptr<sorrel::GLContext> context;
};

}  // namespace gl_testing

#pragma once
// GL tests: one headless context per test suite, cleared before each test; a
// test that fails leaves the picture it saw under the temporary directory. Each
// ends with the attribute reference balance it began with.

#include <memory>

#include "host/viewer/gl_context.h"
#include "tests/support/reference_balance.h"

namespace gl_testing {

/// Width and height of the test surface, in pixels.
constexpr int kSurfaceSize = 128;

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

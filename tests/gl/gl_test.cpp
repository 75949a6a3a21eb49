#include "tests/gl/gl_test.h"

#include <GL/glew.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "host/render/png_writer.h"

namespace gl_testing {

void GLTest::SetUpTestSuite() {
    context = std::make_unique<sorrel::GLContext>(kSurfaceSize, kSurfaceSize);
}

void GLTest::TearDownTestSuite() { context.reset(); }

void GLTest::SetUp() {
    context->makeCurrent();
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    ReferenceBalanceTest::SetUp();
}

void GLTest::TearDown() {
    ReferenceBalanceTest::TearDown();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "the test left a GL error behind";
    if (!HasFailure()) return;
    const ::testing::TestInfo* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "beamwright_gl_failures";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::string path =
        (folder / (std::string(test->test_suite_name()) + "." + test->name() + ".png")).string();
    if (sorrel::writePng(path, readPixels()))
        std::cerr << "picture of the failure: " << path << "\n";
}

}  // namespace gl_testing

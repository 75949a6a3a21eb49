#include "host/viewer/gl_pass_timer.h"

#include <GL/glew.h>

#include <chrono>

namespace sorrel {

double finishedSeconds(const std::function<void()>& pass) {
    glFinish();
    const auto start = std::chrono::steady_clock::now();
    pass();
    glFinish();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

}  // namespace sorrel

#pragma once
// The driver taken out: every GL call the plugin makes reaches a function that
// does nothing, so that what a benchmark measures is the caller's own work.
//
// GLEW's entry points are pointer variables and are swapped by takeGLOut().
// The OpenGL 1.1 functions (glPushAttrib, glDrawElements, ...) are defined as
// no-ops in the executable that links this file; it is linked with -rdynamic,
// so a loaded plugin binds to them as well. Calls that answer answer plausibly:
// fresh object names, shaders that compile, programs that link, and one
// location for each uniform name.

namespace bench {

/// Swaps GLEW's entry points for no-ops. Call after glewInit, that is after a
/// GL context was made current; nothing puts the driver back.
void takeGLOut();

}  // namespace bench

#pragma once
// What goes wrong reading a scene file, as one line: the file, where in it
// (a line and column, or a key path such as "lights[2].cone.angle") and what.

#include <stdexcept>
#include <string>

namespace viewer {

class SceneFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace viewer

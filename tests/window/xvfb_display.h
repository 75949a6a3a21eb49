#pragma once
// An X server of the test's own (Xvfb on a display number no other run
// uses), and xdotool to send it real input.

#include <memory>
#include <string>
#include <vector>

#include "tests/window/child_process.h"

namespace window_testing {

class XvfbDisplay {
public:
    /// Starts Xvfb, its errors going to `errorFile`; throws std::runtime_error
    /// saying why when it cannot start.
    explicit XvfbDisplay(const std::string& errorFile);

    /// Such as ":3".
    const std::string& name() const { return name_; }
    /// "DISPLAY=<name>", for the environment of the programs that use it.
    std::string environment() const { return "DISPLAY=" + name_; }

    /// Runs xdotool with `arguments` on this display; its first line of
    /// output. Throws std::runtime_error when it fails.
    std::string xdotool(const std::vector<std::string>& arguments) const;

private:
    std::string errorFile_;
    std::unique_ptr<ChildProcess> server_;
    std::string name_;
};

}  // namespace window_testing

#pragma once
// Records which GL calls a piece of code makes, in order, with their numeric
// arguments. While a recording runs, GLEW's entry points (function-pointer
// variables) are swapped for recording wrappers; the GL 1.1 functions that the
// plugin calls are defined in this test binary and forward to the driver.

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

struct GLCall {
    std::string name;
    /// Numeric arguments in order. Pointers are left out, except that the
    /// doubles of glUniformMatrix4dv follow its other arguments (16 of them).
    std::vector<double> args;

    bool operator==(const GLCall& other) const { return name == other.name && args == other.args; }
};

void PrintTo(const GLCall& call, std::ostream* out);

/// A call as a test expects it: glCall("glLineWidth", 10.0f).
template <typename... Args>
GLCall glCall(std::string name, Args... args) {
    return {std::move(name), {static_cast<double>(args)...}};
}

/// Runs `work` with GLEW's entry points loaded (a context current) and returns
/// the GL calls it made.
std::vector<GLCall> recordGLCalls(const std::function<void()>& work);

/// The names of `calls`, in order.
std::vector<std::string> callNames(const std::vector<GLCall>& calls);

/// How many of `calls` are named `name`.
int countCalls(const std::vector<GLCall>& calls, const std::string& name);

/// One glDrawElements of a recording with the program in use and the uniform
/// values that the recording had set on that program by then.
struct RecordedDraw {
    double primitive = 0;
    unsigned int program = 0;
    std::map<int, std::vector<double>> uniformsByLocation;

    /// The values last set on `name`, the 16 elements of a matrix; empty when
    /// the recording set none. Asks GL for the location: the program must live.
    std::vector<double> uniform(const char* name) const;
};

/// Every draw of `calls`, in order.
std::vector<RecordedDraw> recordedDraws(const std::vector<GLCall>& calls);

#pragma once
// A program a window test starts, reads line by line and ends by its process id.

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace window_testing {

class ChildProcess {
public:
    /// Starts `arguments[0]`, looked up on PATH, with the test's environment
    /// and `environment` ("NAME=value") over it; its standard output comes
    /// back through a pipe, its standard error goes to `errorFile`. Throws
    /// std::runtime_error when it cannot start.
    ChildProcess(const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment, const std::string& errorFile);
    /// Ends the program with SIGTERM if it still runs, and reaps it.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next line of its output, waiting at most `timeout` for it; nothing
    /// when the output ended or the time ran out.
    std::optional<std::string> nextLine(std::chrono::milliseconds timeout);
    /// Whether its output reached its end (the program closed it, or ended).
    bool outputEnded() const { return outputEnded_; }
    /// Waits for the program to end: its exit status, or 128 and the signal.
    int wait();
    /// Ends the program at once, as a crash or a kill would, and reaps it.
    int killNow();

private:
    pid_t pid_ = -1;
    int output_ = -1;
    std::string buffered_;
    bool outputEnded_ = false;
    std::optional<int> status_;
};

}  // namespace window_testing

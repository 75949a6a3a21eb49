#include "tests/window/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

extern char** environ;

namespace window_testing {

namespace {

constexpr int kSignalStatusBase = 128;
constexpr std::size_t kReadChunk = 4096;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment,
                           const std::string& errorFile) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) throw std::runtime_error("no pipe: " + std::string(strerror(errno)));
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);
    posix_spawn_file_actions_addclose(&actions, pipeEnds[1]);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);

    std::vector<std::string> argv = arguments;
    // The given variables replace the test's own of the same name.
    const auto nameOf = [](const std::string& entry) { return entry.substr(0, entry.find('=')); };
    std::vector<std::string> envp = environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string inherited = *entry;
        const bool replaced = std::any_of(
            environment.begin(), environment.end(),
            [&](const std::string& given) { return nameOf(given) == nameOf(inherited); });
        if (!replaced) envp.push_back(inherited);
    }
    std::vector<char*> argvPointers = pointersTo(argv);
    std::vector<char*> envpPointers = pointersTo(envp);
    const int failed = posix_spawnp(&pid_, argv.front().c_str(), &actions, nullptr,
                                    argvPointers.data(), envpPointers.data());
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    if (failed != 0) {
        close(pipeEnds[0]);
        throw std::runtime_error(argv.front() + ": " + strerror(failed));
    }
    output_ = pipeEnds[0];
}

ChildProcess::~ChildProcess() {
    if (!status_) {
        kill(pid_, SIGTERM);
        wait();
    }
    close(output_);
}

int ChildProcess::killNow() {
    if (!status_) kill(pid_, SIGKILL);
    return wait();
}

std::optional<std::string> ChildProcess::nextLine(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        const std::size_t end = buffered_.find('\n');
        if (end != std::string::npos) {
            std::string line = buffered_.substr(0, end);
            buffered_.erase(0, end + 1);
            return line;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return std::nullopt;
        pollfd ready{output_, POLLIN, 0};
        if (poll(&ready, 1, static_cast<int>(left.count())) <= 0) continue;
        char chunk[kReadChunk];
        const ssize_t count = read(output_, chunk, sizeof chunk);
        if (count <= 0) {
            outputEnded_ = true;
            return std::nullopt;
        }
        buffered_.append(chunk, static_cast<std::size_t>(count));
    }
}

int ChildProcess::wait() {
    if (status_) return *status_;
    int raw = 0;
    while (waitpid(pid_, &raw, 0) < 0 && errno == EINTR) {
    }
    status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : kSignalStatusBase + WTERMSIG(raw);
    return *status_;
}

}  // namespace window_testing

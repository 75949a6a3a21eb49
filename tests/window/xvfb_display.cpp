#include "tests/window/xvfb_display.h"

#include <stdexcept>

namespace window_testing {

namespace {

/// Room for the window and more; 24-bit colour, as the viewer's pictures.
constexpr const char* kScreen = "1280x800x24";
/// How long the server and a command may take before the test gives up on them.
constexpr std::chrono::seconds kPatience{20};

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

}  // namespace

XvfbDisplay::XvfbDisplay(const std::string& errorFile) : errorFile_(errorFile) {
    // -displayfd 1: the server picks a free display and writes its number to
    // standard output once it accepts clients.
    server_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", kScreen, "-nolisten",
                                 "tcp", "-noreset"},
        std::vector<std::string>{}, errorFile);
    const std::optional<std::string> number = server_->nextLine(kPatience);
    if (!number || number->empty())
        throw std::runtime_error("Xvfb started but named no display (see " + errorFile + ")");
    name_ = ":" + *number;
}

std::string XvfbDisplay::xdotool(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{"xdotool"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ChildProcess tool(command, {environment()}, errorFile_);
    const std::optional<std::string> firstLine = tool.nextLine(kPatience);
    // Whatever follows the first line is not wanted, but must be read to the end.
    while (!tool.outputEnded())
        if (!tool.nextLine(kPatience)) break;
    // One that hangs is ended with the tool object.
    if (!tool.outputEnded()) throw std::runtime_error("xdotool " + joined(arguments) + " hangs");
    if (tool.wait() != 0) throw std::runtime_error("xdotool " + joined(arguments) + " failed");
    return firstLine.value_or("");
}

}  // namespace window_testing

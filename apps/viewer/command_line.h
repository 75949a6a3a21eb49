#pragma once
// What beamwright-viewer is asked to do, from its arguments.

#include <optional>
#include <string>
#include <vector>

namespace viewer {

struct CommandLine {
    bool help = false;
    std::optional<std::string> scene;        // default: the shipped studio scene
    std::optional<std::string> tourFolder;   // --tour DIR
    bool window = false;                     // --window
    bool list = false;                       // --list: print the scene and exit
    std::optional<std::string> shotsFolder;  // --shots DIR: the window's pictures
    std::optional<std::string> saveFile;     // --save FILE: the scene as it stands, as JSON
    std::optional<std::string> exportFile;   // --export FILE: the scene as it stands, as glTF
    bool recover = false;                    // --recover: the window opens the recovery file
    std::optional<std::string> plugin;       // --plugin PATH
    std::optional<std::string> root;         // --root DIR: SORREL_ROOT
};

/// Reads the arguments (without the program's name); throws
/// std::invalid_argument with a one-line complaint.
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

/// The text of --help.
std::string usage(const std::string& defaultScene, const std::string& defaultPlugin,
                  const std::string& defaultRoot);

}  // namespace viewer

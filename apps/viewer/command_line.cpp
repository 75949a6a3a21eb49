#include "apps/viewer/command_line.h"

#include <stdexcept>

namespace viewer {

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const auto value = [&](std::optional<std::string>& into) {
            if (i + 1 >= arguments.size()) throw std::invalid_argument(argument + " needs a value");
            into = arguments[++i];
        };
        if (argument == "-h" || argument == "--help")
            line.help = true;
        else if (argument == "--tour")
            value(line.tourFolder);
        else if (argument == "--window")
            line.window = true;
        else if (argument == "--list")
            line.list = true;
        else if (argument == "--shots")
            value(line.shotsFolder);
        else if (argument == "--recover")
            line.recover = true;
        else if (argument == "--save")
            value(line.saveFile);
        else if (argument == "--export")
            value(line.exportFile);
        else if (argument == "--plugin")
            value(line.plugin);
        else if (argument == "--root")
            value(line.root);
        else if (!argument.empty() && argument.front() == '-')
            throw std::invalid_argument("unknown option " + argument);
        else if (line.scene)
            throw std::invalid_argument("one scene at a time: " + *line.scene + " and " + argument);
        else
            line.scene = argument;
    }
    if (int(line.window) + int(line.tourFolder.has_value()) + int(line.list) > 1)
        throw std::invalid_argument("--window, --tour and --list are one or the other");
    if (line.shotsFolder && !line.window) throw std::invalid_argument("--shots goes with --window");
    if (line.recover && !line.window) throw std::invalid_argument("--recover goes with --window");
    if ((line.saveFile || line.exportFile) && line.list)
        throw std::invalid_argument("--save and --export go with --tour, --window or alone");
    return line;
}

std::string usage(const std::string& defaultScene, const std::string& defaultPlugin,
                  const std::string& defaultRoot) {
    return "Usage: beamwright-viewer [SCENE] --tour DIR [--save FILE] [--export FILE] [--plugin "
           "PATH] [--root DIR]\n"
           "       beamwright-viewer [SCENE] [--save FILE] [--export FILE]\n"
           "       beamwright-viewer [SCENE] --window [--recover] [--shots DIR] [--save FILE] "
           "[--export FILE] [--plugin PATH] [--root DIR]\n"
           "       beamwright-viewer [SCENE] --list\n"
           "       beamwright-viewer --help\n"
           "\n"
           "Loads the Beamwright plugin into the stand-in Sorrel viewer host and opens a\n"
           "scene: a scene file (.json) or an asset Assimp reads (glTF, FBX, Collada, .blend,\n"
           "OBJ, 3DS, PLY, STL, ...). --list prints its meshes, lights and cameras, one\n"
           "line each. --tour runs the tour: the selected light placed in each of the\n"
           "twelve modes, a hovered handle, the picking pass and a new light package, each\n"
           "pictured in DIR, with a labelled contact sheet DIR/tour.png and a table of what\n"
           "each mode did; no display or GPU is needed. --window opens the scene in a window\n"
           "under X to place lights with the mouse (bindings in the README) and reports\n"
           "what it does, one line each. The scene format: docs/scene-format.md.\n"
           "\n"
           "  SCENE          the scene file or asset (default " +
           defaultScene +
           ")\n"
           "  --tour DIR     write the tour's pictures into DIR, made if missing\n"
           "  --window       open a window (needs an X display)\n"
           "  --list         print the scene as loaded and exit\n"
           "  --shots DIR    where F12 writes pictures of the window (default .)\n"
           "  --recover      open the scene as it stood at the window's last change, from\n"
           "                 its recovery file ($XDG_STATE_HOME/beamwright, by default\n"
           "                 ~/.local/state/beamwright), which every change writes and a\n"
           "                 save or a clean quit removes\n"
           "  --save FILE    write the scene as it stands (after the tour, if given) as a\n"
           "                 scene file that references the asset it came from; with\n"
           "                 --window, where Ctrl+S saves (default: back to a scene file,\n"
           "                 beside an asset as ASSET.beamwright.json)\n"
           "  --export FILE  write it as glTF 2.0, its lights as KHR_lights_punctual; with\n"
           "                 --window, where Ctrl+E exports (default NAME.beamwright.gltf)\n"
           "  --plugin PATH  the plugin to load (default " +
           defaultPlugin +
           ")\n"
           "  --root DIR     Sorrel's installation root, where the handle shaders lie below\n"
           "                 plugins/Resources/...; sets SORREL_ROOT (default: $SORREL_ROOT,\n"
           "                 else " +
           defaultRoot +
           ")\n"
           "  -h, --help     print this and exit\n";
}

}  // namespace viewer

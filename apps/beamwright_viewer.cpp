// beamwright-viewer: the Beamwright plugin in the stand-in Sorrel viewer host,
// on a scene from a scene file or an asset; --tour runs the tour headless and
// pictures it, --window opens the scene in a window to use it by hand, --list
// prints what the scene holds.

#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/scene/atomic_file.h"
#include "apps/scene/recovery_file.h"
#include "apps/scene/scene_file.h"
#include "apps/viewer/command_line.h"
#include "apps/viewer/contact_sheet.h"
#include "apps/viewer/picture_file.h"
#include "apps/viewer/scene_as_it_stands.h"
#include "apps/viewer/scene_listing.h"
#include "apps/viewer/scene_setup.h"
#include "apps/viewer/tour.h"
#include "apps/viewer/tour_table.h"
#include "apps/viewer/viewer_session.h"
#include "apps/window/keep_files.h"
#include "apps/window/window_report.h"
#include "apps/window/window_viewer.h"
#include "host/core/attribute_model.h"
#include "host/core/plugin_library.h"
#include "host/core/sample_blocks.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"
#include "vrt/stage.h"

using namespace viewer;

namespace {

constexpr const char* kProgram = "beamwright-viewer";
constexpr int kUsageError = 2;

/// A one-line reason to stop.
struct Stop {
    std::string reason;
    int status = EXIT_FAILURE;
};

void printPluginTable(const sorrel::PluginLibrary& plugin, const std::string& path) {
    std::printf("Loaded %s\n", path.c_str());
    for (const sorrel::PluginRowView& row : plugin.getPlugins())
        std::printf("  %-28s %-32s version %u.%u\n", row.name.c_str(), row.apiName.c_str(),
                    row.pluginVersionMajor, row.pluginVersionMinor);
}

/// Fails with the loader's own words rather than letting the host abort on them.
void checkPluginLoads(const std::string& path) {
    if (!std::filesystem::exists(path))
        throw Stop{"no plugin at " + path + " (build it with make, or give --plugin PATH)"};
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw Stop{std::string("cannot load the plugin: ") + dlerror()};
    dlclose(library);
}

std::vector<SheetPicture> sheetPictures(const TourReport& report) {
    std::vector<SheetPicture> pictures;
    for (const TourPicture& picture : report.pictures)
        pictures.push_back({picture.image, picture.title, picture.caption});
    return pictures;
}

/// Runs `session` and stops when it leaves attribute references or sample blocks behind.
void withoutLeaks(const std::function<void()>& session) {
    const std::int64_t references = sorrel::AttributeModel::instance().liveReferences();
    const std::int64_t blocks = sorrel::SampleBlocks::instance().outstanding();
    session();
    const std::int64_t leaked = sorrel::AttributeModel::instance().liveReferences() - references;
    if (leaked != 0) throw Stop{std::to_string(leaked) + " attribute references leaked"};
    if (sorrel::SampleBlocks::instance().outstanding() != blocks)
        throw Stop{"sample blocks were not given back"};
}

/// Where --save and --export write the scene as it stands.
struct KeepAsked {
    std::optional<std::string> save;
    std::optional<std::string> gltf;
};

/// Saves and exports the scene in `stage` as it stands, if asked, and says so.
void keepScene(const KeepAsked& keep, const SceneDescription& loaded, const sorrel::Scene& scene) {
    if (keep.save) {
        const ViewNow view{loaded.camera, sorrel::selectedPaths(scene), {}};
        saveAsItStands(*keep.save, loaded, scene, view);
        std::printf("saved %s\n", keep.save->c_str());
    }
    if (keep.gltf) {
        exportAsItStands(*keep.gltf, loaded, scene);
        std::printf("exported %s\n", keep.gltf->c_str());
    }
}

/// The scene as loaded, put into a viewer without the plugin, saved and exported.
void keepSceneOf(const std::string& scenePath, const KeepAsked& keep) {
    const SceneDescription scene = loadScene(scenePath);
    withoutLeaks([&] {
        sorrel::ViewerStage stage(scene.camera.width, scene.camera.height, scene.camera.eye,
                                  scene.camera.target);
        vrt::Stage usd;
        putSceneIntoStage(scene, stage, usd);
        keepScene(keep, scene, stage.scene());
    });
}

void runTourOn(const std::string& scenePath, const std::string& pluginPath,
               const std::string& folder, const KeepAsked& keep) {
    const auto start = std::chrono::steady_clock::now();
    const SceneDescription scene = loadScene(scenePath);
    checkPluginLoads(pluginPath);
    const sorrel::PluginLibrary plugin(pluginPath);
    printPluginTable(plugin, pluginPath);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Stop{"cannot make " + folder + ": " + error.message()};

    TourReport report;
    withoutLeaks([&] {
        const sorrel::GLContext context(scene.camera.width, scene.camera.height);
        ViewerSession session(scene, plugin, context);
        std::printf("Scene %s: %zu meshes, %zu lights, %zu USD lights\n\n", scenePath.c_str(),
                    scene.meshes.size(), scene.lights.size(), scene.usdLights.size());
        report = runTour(session, context, folder);
        keepScene(keep, scene, session.stage().scene());
    });

    printModeTable(stdout, report);
    const std::string sheetPath = folder + "/tour.png";
    const std::string heading = "Beamwright tour of " + scenePath + ": placing " + report.light;
    try {
        viewer::writePicture(sheetPath, makeContactSheet(sheetPictures(report), heading));
    } catch (const viewer::FileWriteError& error) {
        throw Stop{error.what()};
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("\nWrote %zu pictures and the contact sheet %s in %.1f s; no reference leaked.\n",
                report.pictures.size(), sheetPath.c_str(), seconds.count());
}

void runWindowOn(const std::string& scenePath, const std::string& pluginPath,
                 WindowSettings settings, bool recover) {
    const std::string recovery = recoveryFileFor(scenePath);
    if (recover && !std::filesystem::exists(recovery))
        throw Stop{"no recovery file for " + scenePath + " (looked for " + recovery + ")"};
    // A recovered scene is kept where the scene it came from is kept.
    settings.recoveryFile = recovery;
    const KeepFiles beside = keepFilesFor(scenePath);
    settings.saveFile = settings.saveFile.value_or(beside.save);
    settings.exportFile = settings.exportFile.value_or(beside.gltf);
    checkPluginLoads(pluginPath);
    try {
        checkHandleShaders();
    } catch (const TourFailure& missing) {
        throw Stop{missing.what()};
    }
    const sorrel::PluginLibrary plugin(pluginPath);
    const WindowReport report(stdout);
    for (bool fromRecovery = recover;; fromRecovery = true) {
        const SceneDescription scene = loadScene(fromRecovery ? recovery : scenePath);
        if (fromRecovery) report.recovered(recovery);
        settings.recoveryOffered = !fromRecovery && recoveryIsNewer(recovery, scenePath);
        WindowViewer::Ending ending = WindowViewer::Ending::Quit;
        withoutLeaks([&] { ending = runWindow(scene, plugin, settings, stdout); });
        if (ending != WindowViewer::Ending::Recover) return;
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const CommandLine line = parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
        if (line.help) {
            std::fputs(
                usage(BEAMWRIGHT_DEFAULT_SCENE, BEAMWRIGHT_PLUGIN_PATH, BEAMWRIGHT_RESOURCES_DIR)
                    .c_str(),
                stdout);
            return EXIT_SUCCESS;
        }
        if (line.root) setenv("SORREL_ROOT", line.root->c_str(), /* overwrite = */ 1);
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 0);
        const std::string scene = line.scene.value_or(BEAMWRIGHT_DEFAULT_SCENE);
        const std::string plugin = line.plugin.value_or(BEAMWRIGHT_PLUGIN_PATH);
        if (line.list) {
            std::fputs(sceneListing(loadScene(scene)).c_str(), stdout);
        } else if (line.window) {
            WindowSettings settings;
            if (line.shotsFolder) {
                settings.shotsFolder = *line.shotsFolder;
                viewer::makeFolders(settings.shotsFolder);
            }
            settings.saveFile = line.saveFile;
            settings.exportFile = line.exportFile;
            runWindowOn(scene, plugin, settings, line.recover);
        } else if (line.tourFolder) {
            runTourOn(scene, plugin, *line.tourFolder, {line.saveFile, line.exportFile});
        } else if (line.saveFile || line.exportFile) {
            keepSceneOf(scene, {line.saveFile, line.exportFile});
        } else {
            throw Stop{
                "nothing to do: give --tour DIR, --window, --list, --save FILE or --export "
                "FILE (see --help)",
                kUsageError};
        }
        return EXIT_SUCCESS;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s: %s (see --help)\n", kProgram, error.what());
        return kUsageError;
    } catch (const viewer::FileWriteError& error) {
        std::fprintf(stderr, "%s: %s\n", kProgram, error.what());
        return EXIT_FAILURE;
    } catch (const Stop& stop) {
        std::fprintf(stderr, "%s: %s\n", kProgram, stop.reason.c_str());
        return stop.status;
    } catch (const TourFailure& failure) {
        std::fprintf(stderr, "%s: the tour failed: %s\n", kProgram, failure.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", kProgram, error.what());
    }
    return EXIT_FAILURE;
}

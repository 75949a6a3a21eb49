#include "fuzz/loaded_plugin.h"

#include <cstdio>
#include <cstdlib>

#include "host/core/plugin_library.h"
#include "host/viewer/viewer_tables.h"

namespace fuzzing {

namespace {

const sorrel::PluginLibrary& library() {
    static const sorrel::PluginLibrary plugin(BEAMWRIGHT_PLUGIN_PATH);
    return plugin;
}

}  // namespace

void loadPlugin() {
    static const bool loaded = [] {
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 0);
        for (const sorrel::PluginRowView& row : library().getPlugins()) {
            if (row.setHost(sorrel::viewerHostRecord()) != 0) {
                std::fprintf(stderr, "setHost of %s failed\n", row.name.c_str());
                std::abort();
            }
        }
        return true;
    }();
    (void)loaded;
}

void* const* suiteOf(const std::string& name) { return library().row(name).getSuite(); }

}  // namespace fuzzing

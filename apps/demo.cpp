// Loads Beamwright.so into the stand-in viewer host, shows its plugin table,
// drives one object of each class and checks the attribute reference balance.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/attribute_model.h"
#include "host/plugin_host.h"
#include "host/plugin_library.h"
#include "host/plugin_objects.h"

using namespace sorrel;

namespace {

AttrRef mouseEvent(const char* kind, int x, int y) {
    return groupAttr({{"type", stringAttr(kind)},
                      {"data", groupAttr({{"x", intAttr(x)},
                                          {"y", intAttr(y)},
                                          {"button", intAttr(0)},
                                          {"buttons", intAttr(0)},
                                          {"modifiers", intAttr(0)}})}});
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : BEAMWRIGHT_PLUGIN_PATH;
    AttributeModel& attributes = AttributeModel::instance();
    PluginHost& host = PluginHost::instance();

    const PluginLibrary plugin(path);
    std::printf("Loaded %s\n\n", path.c_str());
    std::printf("%-28s %-32s %s\n", "plugin", "kind", "versions (api, plugin)");
    for (const PluginRowView& row : plugin.getPlugins()) {
        std::printf("%-28s %-32s %u, %u.%u\n", row.name.c_str(), row.apiName.c_str(),
                    row.apiVersion, row.pluginVersionMajor, row.pluginVersionMinor);
    }

    const std::int64_t before = attributes.liveReferences();
    std::printf("\nLive attribute references before: %lld\n", static_cast<long long>(before));

    int hostHandleToken = 0;
    for (const PluginRowView& row : plugin.getPlugins()) {
        const int status = row.setHost(host.record());
        if (row.apiName == "ViewportLayerPlugin") {
            LayerObject layer(row.getSuite(), &hostHandleToken);
            layer.setOption("Enabled", intAttr(1));
            const bool used = layer.event(mouseEvent("MouseMove", 10, 20));
            const AttrRef mode = layer.getOption("Mode");
            std::printf("  %-26s setHost %d, event used %s, \"Mode\" %s\n", row.name.c_str(),
                        status, used ? "yes" : "no", mode.describe().c_str());
        } else {
            ComponentObject component(row.getSuite(), &hostHandleToken);
            component.setup();
            const AttrRef attrs = groupAttr({{"type", stringAttr("light")}});
            component.locationEvent("/root/world/lgt/key", attrs, AttrRef(), 0x20000);
            component.locationsSelected({"/root/world/lgt/key"});
            component.cleanup();
            std::printf("  %-26s setHost %d, table marker 0x%016llx\n", row.name.c_str(), status,
                        static_cast<unsigned long long>(component.marker()));
        }
    }

    const std::int64_t after = attributes.liveReferences();
    std::printf("Live attribute references after:  %lld (%s)\n", static_cast<long long>(after),
                after == before ? "balanced" : "LEAKED");
    return after == before ? EXIT_SUCCESS : EXIT_FAILURE;
}

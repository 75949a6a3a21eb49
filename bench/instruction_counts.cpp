// Instructions per light and per location of the plugin's own work, beside its
// floor, counted by callgrind (see `make bench-instructions`).
//
// Run under callgrind, each measured call is bracketed by client requests that
// switch instrumentation and collection on and off, and each figure ends in a
// dump named "<path>/<part>/<items>". The parts: "plugin" reaches the host
// through the trampolines that callgrind leaves out (--toggle-collect), "all"
// reaches it straight, and "floor" is the floor. Run with `--report DIR`, it
// reads the dumps in DIR and prints the table.

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench/support/handles_scene.h"
#include "bench/support/host_share.h"
#include "bench/support/location_scene.h"
#include "scene/light_component.h"

namespace {

constexpr int kLights = 10000;
constexpr std::size_t kIngestSizes[] = {10000, 100000};
constexpr std::size_t kRebuildSizes[] = {10000, 100000};
constexpr const char* kPlugin = "plugin";
constexpr const char* kAll = "all";
constexpr const char* kFloor = "floor";

/// What one path is held to: at most `limit`, of the plugin's own instructions
/// per item, or of the ratio to the floor.
struct Goal {
    bool absolute;
    double limit;
};

struct Path {
    const char* key;
    const char* title;
    const char* unit;
    Goal goal;
};

const Path kPaths[] = {
    {"draw", "draw pass", "light", {true, 1000.0}},
    {"picking", "picking pass", "light", {true, 1000.0}},
    {"ingest", "location event, new location", "event", {false, 2.0}},
    {"rebuild", "light list rebuild", "location", {false, 1.2}},
};

/// Counts `work` under callgrind as the dump "<path>/<part>/<items>".
void count(const std::string& path, const char* part, std::size_t items,
           const std::function<void()>& work) {
    const std::string name = path + "/" + part + "/" + std::to_string(items);
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_TOGGLE_COLLECT;
    work();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

/// Counts `work` with the host left out, then with it in; `prepare` runs
/// uncounted before each.
void countPluginAndAll(const std::string& path, std::size_t items,
                       const std::function<void()>& prepare, const std::function<void()>& work) {
    for (const bool separate : {true, false}) {
        bench::separateHostShare(separate);
        prepare();
        count(path, separate ? kPlugin : kAll, items, work);
    }
    bench::separateHostShare(true);
}

void countHandles() {
    bench::HandlesScene scene(kLights);
    const bench::HandlesFloor floor(scene);
    const std::size_t lights = scene.lightCount();
    const auto nothing = [] {};
    const auto startPicking = [&] { scene.startPicking(); };
    // A first pass of each kind asks GL for its uniform locations.
    scene.drawPass();
    startPicking();
    scene.pickingPass();
    countPluginAndAll("draw", lights, nothing, [&] { scene.drawPass(); });
    count("draw", kFloor, lights, [&] { floor.drawPass(); });
    countPluginAndAll("picking", lights, startPicking, [&] { scene.pickingPass(); });
    count("picking", kFloor, lights, [&] { floor.pickingPass(); });
}

void countIngest(std::size_t size) {
    const std::vector<std::string> paths = bench::makePaths(size);
    {
        const bench::LocationScene scene(paths);
        bench::separateHostShare(true);
        count("ingest", kPlugin, size, [&] { scene.ingest(); });
    }
    {
        const bench::LocationScene scene(paths);
        bench::separateHostShare(false);
        count("ingest", kAll, size, [&] { scene.ingest(); });
        bench::separateHostShare(true);
    }
    bench::IngestFloor floor(paths);
    count("ingest", kFloor, size, [&] { floor.ingest(); });
}

void countRebuild(std::size_t size) {
    const std::vector<std::string> paths = bench::makePaths(size);
    bench::LocationScene scene(paths);
    scene.ingest();
    BeamwrightLayerVDC& component = scene.component();
    // A first rebuild, as every later one finds it: the queue and lists grown.
    component.getLights();
    // The change that makes the list stale is not counted.
    countPluginAndAll(
        "rebuild", size, [&] { scene.reportChange(bench::kLocationsPerLight); },
        [&] { component.getLights(); });
    bench::WalkFloor floor(paths);
    count("rebuild", kFloor, size, [&] { floor.walk(); });
}

// ---- the report ----

/// Instructions of each dump, by its name.
std::map<std::string, double> readDumps(const std::filesystem::path& folder) {
    std::map<std::string, double> counts;
    const std::string descPrefix = "desc: Trigger: Client Request: ";
    const std::string totalsPrefix = "totals: ";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path());
        std::string line;
        std::string name;
        double total = -1.0;
        while (std::getline(file, line)) {
            if (line.rfind(descPrefix, 0) == 0) name = line.substr(descPrefix.size());
            // The summary line is of no use once collection was toggled; totals is.
            if (line.rfind(totalsPrefix, 0) == 0)
                total = std::strtod(line.c_str() + totalsPrefix.size(), nullptr);
        }
        if (!name.empty() && total >= 0.0) counts[name] = total;
    }
    return counts;
}

void printRow(const Path& path, std::size_t items, const std::map<std::string, double>& counts) {
    const std::string stem = std::string(path.key) + "/";
    const std::string suffix = "/" + std::to_string(items);
    const auto perItem = [&](const char* part) {
        const auto found = counts.find(stem + part + suffix);
        return found == counts.end() ? -1.0 : found->second / static_cast<double>(items);
    };
    const double plugin = perItem(kPlugin);
    const double all = perItem(kAll);
    const double floor = perItem(kFloor);
    if (plugin < 0.0 || floor <= 0.0) return;
    const double ratio = plugin / floor;
    const bool held = path.goal.absolute ? plugin <= path.goal.limit : ratio <= path.goal.limit;
    char goal[64];
    if (path.goal.absolute)
        std::snprintf(goal, sizeof goal, "plugin <= %.0f", path.goal.limit);
    else
        std::snprintf(goal, sizeof goal, "ratio <= %.1f", path.goal.limit);
    std::printf("%-30s %8zu %-9s %9.0f %9.0f %9.0f %7.2f  %-15s %s\n", path.title, items, path.unit,
                plugin, std::max(all - plugin, 0.0), floor, ratio, goal, held ? "held" : "MISSED");
}

int report(const char* folder) {
    const std::map<std::string, double> counts = readDumps(folder);
    std::printf(
        "Instructions per item (callgrind); plugin = the plugin's own, host = the host's "
        "share, left out of plugin\n");
    std::printf("%-30s %8s %-9s %9s %9s %9s %7s  %-15s %s\n", "path", "items", "item", "plugin",
                "host", "floor", "ratio", "goal", "");
    for (const Path& path : kPaths) {
        std::vector<std::size_t> sizes;
        for (const auto& [name, total] : counts) {
            const std::string stem = std::string(path.key) + "/" + kFloor + "/";
            if (name.rfind(stem, 0) == 0) sizes.push_back(std::stoul(name.substr(stem.size())));
        }
        std::sort(sizes.begin(), sizes.end());
        for (const std::size_t items : sizes) printRow(path, items, counts);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--report") return report(argv[2]);
    if (!RUNNING_ON_VALGRIND)
        std::fprintf(stderr, "instruction_counts: run under callgrind (make bench-instructions)\n");
    // Names of paths given: only those ("handles" stands for both passes).
    const std::vector<std::string> chosen(argv + 1, argv + argc);
    const auto wanted = [&](const char* name) {
        return chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end();
    };
    if (wanted("handles")) countHandles();
    if (wanted("ingest"))
        for (const std::size_t size : kIngestSizes) countIngest(size);
    if (wanted("rebuild"))
        for (const std::size_t size : kRebuildSizes) countRebuild(size);
    return 0;
}

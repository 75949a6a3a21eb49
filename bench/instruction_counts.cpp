// Instructions per light and per location of the plugin's own work, beside its
// floor, counted by callgrind (see `make bench-instructions`).
//
// Every figure is counted in a process of its own, after the same preparation
// as its floor: an insert into a map costs more or less in a heap that other
// work has been through, so a count must not depend on what ran before it.
// Under callgrind the measured call is bracketed by client requests that switch
// instrumentation and collection on and off, and ends in a dump named
// "<path>/<part>/<items>". The parts: "plugin" reaches the host through the
// trampolines that callgrind leaves out (--toggle-collect), "all" reaches it
// straight, and "floor" is the floor.
//
// Run plainly, with names of paths or none, the program counts each figure in
// a process of its own under callgrind and prints the table. `--count PATH
// PART ITEMS` is what each of those processes runs; `--report DIR` prints the
// table of the dumps in DIR.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "bench/support/handles_scene.h"
#include "bench/support/host_share.h"
#include "bench/support/location_scene.h"
#include "scene/light_component.h"

extern char** environ;

namespace {

constexpr int kLights = 10000;
constexpr std::size_t kSizes[] = {10000, 100000};
/// Counted only when asked for by name ("million"): some minutes.
constexpr std::size_t kMillion = 1000000;
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

/// One count: a part of a path at a size.
struct Figure {
    std::string path;
    std::string part;
    std::size_t items;
};

// ---- one figure, in a process of its own ----

/// Counts `work` under callgrind as the dump "<path>/<part>/<items>".
void count(const std::string& path, const std::string& part, std::size_t items,
           const std::function<void()>& work) {
    const std::string name = path + "/" + part + "/" + std::to_string(items);
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_TOGGLE_COLLECT;
    work();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

void countHandles(const std::string& path, const std::string& part) {
    bench::HandlesScene scene(kLights);
    const bench::HandlesFloor floor(scene);
    const std::size_t lights = scene.lightCount();
    // A first pass of each kind asks GL for its uniform locations.
    scene.drawPass();
    scene.startPicking();
    scene.pickingPass();
    const bool drawing = path == "draw";
    if (part == kFloor) {
        count(path, part, lights, [&] { drawing ? floor.drawPass() : floor.pickingPass(); });
        return;
    }
    bench::separateHostShare(part == kPlugin);
    if (!drawing) scene.startPicking();
    count(path, part, lights, [&] { drawing ? scene.drawPass() : scene.pickingPass(); });
}

void countIngest(const std::string& part, std::size_t size) {
    const std::vector<std::string> paths = bench::makePaths(size);
    // Made for the floor too, so that the floor meets the heap the plugin meets.
    const bench::LocationScene scene(paths);
    if (part == kFloor) {
        bench::IngestFloor floor(paths);
        count("ingest", part, size, [&] { floor.ingest(); });
        return;
    }
    bench::separateHostShare(part == kPlugin);
    count("ingest", part, size, [&] { scene.ingest(); });
}

void countRebuild(const std::string& part, std::size_t size) {
    const std::vector<std::string> paths = bench::makePaths(size);
    if (part == kFloor) {
        // The walk allocates nothing: its lists are reserved beforehand.
        bench::WalkFloor floor(paths);
        count("rebuild", part, size, [&] { floor.walk(); });
        return;
    }
    bench::LocationScene scene(paths);
    scene.ingest();
    BeamwrightLayerVDC& component = scene.component();
    // A first rebuild, as every later one finds it: the queue and lists grown.
    component.getLights();
    // The change that makes the list stale is not counted.
    scene.reportChange(bench::kLocationsPerLight);
    bench::separateHostShare(part == kPlugin);
    count("rebuild", part, size, [&] { component.getLights(); });
}

int countOne(const Figure& figure) {
    if (!RUNNING_ON_VALGRIND) {
        std::fprintf(stderr, "instruction_counts: --count runs under callgrind\n");
        return 1;
    }
    if (figure.path == "draw" || figure.path == "picking")
        countHandles(figure.path, figure.part);
    else if (figure.path == "ingest")
        countIngest(figure.part, figure.items);
    else if (figure.path == "rebuild")
        countRebuild(figure.part, figure.items);
    else
        return 1;
    return 0;
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
    // The host's share is not counted at a million locations: "-".
    char host[32] = "-";
    if (all >= 0.0) std::snprintf(host, sizeof host, "%.0f", std::max(all - plugin, 0.0));
    std::printf("%-30s %8zu %-9s %9.0f %9s %9.0f %7.2f  %-15s %s\n", path.title, items, path.unit,
                plugin, host, floor, ratio, goal, held ? "held" : "MISSED");
}

int report(const std::filesystem::path& folder) {
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

// ---- every figure, each in a process under callgrind ----

/// The figures of the paths named: "handles" (both passes), "ingest",
/// "rebuild", and "million", both of the latter at a million locations
/// without the host's share; none named, all but "million".
std::vector<Figure> figuresOf(const std::vector<std::string>& names) {
    const auto wanted = [&](const char* name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    const bool all = names.empty();
    std::vector<Figure> figures;
    const auto add = [&](const char* path, std::size_t items, bool withHost) {
        for (const char* part : {kPlugin, kAll, kFloor})
            if (withHost || part != kAll) figures.push_back({path, part, items});
    };
    if (all || wanted("handles")) {
        add("draw", kLights, true);
        add("picking", kLights, true);
    }
    for (const char* path : {"ingest", "rebuild"}) {
        if (all || wanted(path))
            for (const std::size_t size : kSizes) add(path, size, true);
        if (wanted("million")) add(path, kMillion, false);
    }
    return figures;
}

/// Runs `arguments` and waits; its output goes to `log`. True when it succeeded.
bool run(const std::vector<std::string>& arguments, const std::filesystem::path& log) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t child = 0;
    const int spawned = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return spawned == 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

int countAll(const std::vector<Figure>& figures) {
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    std::string folderName = (std::filesystem::temp_directory_path() / "counts-XXXXXX").string();
    if (mkdtemp(folderName.data()) == nullptr) return 1;
    const std::filesystem::path folder = folderName;
    const std::filesystem::path log = folder / "log";
    int status = 0;
    for (std::size_t i = 0; i < figures.size() && status == 0; ++i) {
        const Figure& figure = figures[i];
        std::fprintf(stderr, "counting %s/%s/%zu\n", figure.path.c_str(), figure.part.c_str(),
                     figure.items);
        const std::string out = (folder / ("counts-" + std::to_string(i))).string();
        if (!run({"valgrind", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no",
                  "--toggle-collect=*HostEntry*", "--callgrind-out-file=" + out, self.string(),
                  "--count", figure.path, figure.part, std::to_string(figure.items)},
                 log)) {
            std::ifstream text(log);
            std::cerr << text.rdbuf();
            status = 1;
        }
    }
    if (status == 0) status = report(folder);
    std::filesystem::remove_all(folder);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 2 && arguments[0] == "--report") return report(arguments[1]);
    if (arguments.size() == 4 && arguments[0] == "--count")
        return countOne({arguments[1], arguments[2], std::stoul(arguments[3])});
    return countAll(figuresOf(arguments));
}

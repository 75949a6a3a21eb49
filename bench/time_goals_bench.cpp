// The plugin's own time beside its floor, path by path and size by size, each
// ratio printed beside its goal with a verdict. Everything is measured in this
// one run, side by side: thread CPU time (what other processes do meanwhile
// does not count), the least and the median of many repetitions, both sides
// warm (the passes, the rebuild) or both cold (ingest, into a new component
// and a new map). Where the plugin calls the host, the host's share is taken
// out: the path runs once straight, timed, and once through the trampolines of
// bench/support/host_share.h, which count the host's time; the time stamp
// counter's own cost inside each call is taken off that count.
//
// Heap bytes are counted by the allocation functions below, only while a
// count is asked for, in an ingest of its own.

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "bench/support/handles_scene.h"
#include "bench/support/host_share.h"
#include "bench/support/location_scene.h"
#include "bench/support/seconds_of.h"
#include "scene/light_component.h"

using bench::threadSecondsOf;

namespace {

constexpr double kNanosecondsPerSecond = 1e9;
constexpr int kLightCounts[] = {100, 1000, 10000};
constexpr std::size_t kLocationCounts[] = {10000, 100000, 1000000};
/// Enough repetitions for a steady least value, and a run of a minute or two.
constexpr std::size_t kLightRepetitions = 300000;     // divided by the lights
constexpr std::size_t kIngestRepetitions = 100000;    // divided by the locations, at least 2
constexpr std::size_t kRebuildRepetitions = 1000000;  // divided by the locations, at least 5

constexpr double kPassGoal = 1.5;
constexpr double kIngestGoal = 2.0;
constexpr double kRebuildGoal = 1.3;
/// Rebuilds are held to their goal from this size up.
constexpr std::size_t kRebuildGoalFrom = 100000;
constexpr double kFlatGoal = 1.5;
constexpr double kHeapGoal = 1.2;
constexpr std::size_t kEvictionBytes = std::size_t{64} << 20;
/// Keeps the eviction's writes from being left out.
volatile std::uint64_t benchmarkSink = 0;

// ---- heap bytes ----

bool countingHeap = false;
/// Live heap bytes (usable sizes) by who allocated or freed them, while counting.
std::int64_t pluginBytes = 0;
std::int64_t hostBytes = 0;

void countBlock(void* block, std::int64_t sign) {
    if (!countingHeap || block == nullptr) return;
    const auto bytes = static_cast<std::int64_t>(malloc_usable_size(block));
    (bench::insideHost() ? hostBytes : pluginBytes) += sign * bytes;
}

// ---- repetitions ----

/// Seconds per item, one of each per repetition: the path run straight, the
/// host's share of it, and the floor. The plugin's own least time is the least
/// straight run less the host's least share, and so for the median: a run and
/// the count of the host's share are two runs, and least less least compares
/// undisturbed with undisturbed.
struct Samples {
    std::vector<double> straight;
    std::vector<double> host;
    std::vector<double> floor;
};

double least(const std::vector<double>& values) {
    return *std::min_element(values.begin(), values.end());
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// What reading the thread's clock twice costs, taken off every span.
double clockCost() {
    static const double cost = [] {
        double lowest = 1.0;
        for (int i = 0; i < 1000; ++i) lowest = std::min(lowest, threadSecondsOf([] {}));
        return lowest;
    }();
    return cost;
}

double spanOf(const std::function<void()>& work) {
    return std::max(threadSecondsOf(work) - clockCost(), 0.0);
}

/// Measured once, before the first path.
double countingCost() {
    static const double cost = bench::countingCost();
    return cost;
}

/// The seconds of a straight run of `work`, and in `hostSeconds` the host's
/// share, counted in a run through the trampolines. A host call that lost the
/// processor is taken to have lasted as long as the others on average.
/// `prepare` runs, untimed, before each run.
double straightSecondsOf(const std::function<void()>& prepare, const std::function<void()>& work,
                         double& hostSeconds) {
    bench::separateHostShare(false);
    prepare();
    const double straight = spanOf(work);
    bench::separateHostShare(true);
    prepare();
    bench::timeHostCalls(true);
    work();
    const bench::HostTime host = bench::hostTime();
    bench::timeHostCalls(false);
    hostSeconds = 0.0;
    if (host.calls != 0) {
        const auto counted = static_cast<double>(host.calls);
        const double seconds = host.seconds - counted * countingCost();
        hostSeconds =
            std::max(seconds, 0.0) * static_cast<double>(host.calls + host.preempted) / counted;
    }
    return straight;
}

// ---- the table ----

struct Row {
    std::string path;
    std::size_t items;
    Samples samples;
    double goal;  // 0 for none
};

double nanoseconds(double seconds) { return seconds * kNanosecondsPerSecond; }

void printHeader() {
    std::printf("%-32s %9s %9s %8s %9s %7s %7s  %-8s %s\n", "path, per item", "items", "plugin ns",
                "host ns", "floor ns", "least", "median", "goal", "verdict");
}

const char* verdict(bool held) { return held ? "held" : "MISSED"; }

void printRow(const Row& row) {
    const Samples& s = row.samples;
    const double own = least(s.straight) - least(s.host);
    const double ratio = own / least(s.floor);
    const double medianRatio = (median(s.straight) - median(s.host)) / median(s.floor);
    char goal[16] = "-";
    if (row.goal > 0.0) std::snprintf(goal, sizeof goal, "<= %.1f", row.goal);
    std::printf("%-32s %9zu %9.1f %8.1f %9.1f %7.2f %7.2f  %-8s %s\n", row.path.c_str(), row.items,
                nanoseconds(own), nanoseconds(least(s.host)), nanoseconds(least(s.floor)), ratio,
                medianRatio, goal, row.goal > 0.0 ? verdict(medianRatio <= row.goal) : "");
    std::fflush(stdout);
}

/// The plugin's median time per item at the largest size over that at the smallest,
/// beside the floor's own growth: where the floor grows past the goal, the
/// plugin is held to growing no more than its floor.
void printGrowth(const char* path, const Row& small, const Row& large) {
    const auto own = [](const Samples& s) { return median(s.straight) - median(s.host); };
    const double plugin = own(large.samples) / own(small.samples);
    const double floor = median(large.samples.floor) / median(small.samples.floor);
    const bool held = plugin <= kFlatGoal;
    const bool heldAgainstFloor = !held && floor > kFlatGoal && plugin <= floor;
    std::printf("%-32s %9s plugin %5.2fx  floor %5.2fx  goal <= %.1f  %s\n", path, "", plugin,
                floor, kFlatGoal,
                held               ? "held"
                : heldAgainstFloor ? "held as far as the floor allows: it grows past the goal"
                                   : "MISSED");
}

// ---- the paths ----

std::size_t repetitions(std::size_t budget, std::size_t items, std::size_t atLeast) {
    return std::max(budget / items, atLeast);
}

void handlesRows(std::vector<Row>& draw, std::vector<Row>& picking) {
    for (const int count : kLightCounts) {
        bench::HandlesScene scene(count);
        const bench::HandlesFloor floor(scene);
        const double lights = static_cast<double>(scene.lightCount());
        Row drawRow{"draw pass, per light", scene.lightCount(), {}, kPassGoal};
        Row pickRow{"picking pass, per light", scene.lightCount(), {}, kPassGoal};
        const auto none = [] {};
        const auto startPicking = [&] { scene.startPicking(); };
        // Warm: a first pass of each kind asks GL for its uniform locations.
        scene.drawPass();
        scene.startPicking();
        scene.pickingPass();
        floor.drawPass();
        floor.pickingPass();
        const auto add = [&](Samples& samples, double straight, double host, double floorSeconds) {
            samples.straight.push_back(straight / lights);
            samples.host.push_back(host / lights);
            samples.floor.push_back(floorSeconds / lights);
        };
        for (std::size_t i = 0; i < repetitions(kLightRepetitions, count, 5); ++i) {
            double host = 0.0;
            double straight = straightSecondsOf(
                none, [&] { scene.drawPass(); }, host);
            add(drawRow.samples, straight, host, spanOf([&] { floor.drawPass(); }));
            straight = straightSecondsOf(
                startPicking, [&] { scene.pickingPass(); }, host);
            add(pickRow.samples, straight, host, spanOf([&] { floor.pickingPass(); }));
        }
        draw.push_back(std::move(drawRow));
        picking.push_back(std::move(pickRow));
    }
}

/// Writes over twice the largest cache, so that what a walk reads comes from memory.
void evictCaches() {
    static std::vector<std::uint64_t> other(kEvictionBytes / sizeof(std::uint64_t));
    for (std::uint64_t& word : other) word += 1;
    benchmarkSink = other[other.size() / 2];
}

struct HeapRow {
    std::size_t locations;
    double plugin;
    double host;
    double floor;
};

void locationRows(std::vector<Row>& ingest, std::vector<Row>& rebuild, std::vector<HeapRow>& heap,
                  std::size_t largest) {
    for (const std::size_t size : kLocationCounts) {
        if (size > largest) break;
        const std::vector<std::string> paths = bench::makePaths(size);
        const double locations = static_cast<double>(size);
        bench::LocationScene scene(paths);
        Row ingestRow{"new location event", size, {}, kIngestGoal};
        for (std::size_t i = 0; i < repetitions(kIngestRepetitions, size, 2); ++i) {
            // Both cold: a new map, and a new component for each of the two runs.
            bench::IngestFloor floor(paths);
            Samples& samples = ingestRow.samples;
            samples.floor.push_back(spanOf([&] { floor.ingest(); }) / locations);
            double host = 0.0;
            const double straight =
                straightSecondsOf([&] { scene.renewComponent(); }, [&] { scene.ingest(); }, host);
            samples.straight.push_back(straight / locations);
            samples.host.push_back(host / locations);
        }
        ingest.push_back(std::move(ingestRow));

        // Heap bytes, in an ingest counted by itself.
        scene.renewComponent();
        bench::separateHostShare(true);
        countingHeap = true;
        pluginBytes = hostBytes = 0;
        scene.ingest();
        BeamwrightLayerVDC& component = scene.component();
        component.getLights();
        const HeapRow heapRow{size, static_cast<double>(pluginBytes) / locations,
                              static_cast<double>(hostBytes) / locations, 0.0};
        pluginBytes = 0;
        bench::IngestFloor heapFloor(paths);
        heapFloor.ingest();
        heap.push_back(heapRow);
        heap.back().floor = static_cast<double>(pluginBytes) / locations;
        countingHeap = false;

        // Both warm (each walked before, and each time after the other), then
        // both cold (the caches filled with other data before each walk).
        const double goal = size >= kRebuildGoalFrom ? kRebuildGoal : 0.0;
        Row rebuildRow{"light list rebuild, warm", size, {}, goal};
        Row coldRow{"light list rebuild, cold", size, {}, goal};
        bench::WalkFloor walkFloor(paths);
        walkFloor.walk();
        for (Row* row : {&rebuildRow, &coldRow}) {
            const bool cold = row == &coldRow;
            for (std::size_t i = 0; i < repetitions(kRebuildRepetitions, size, 5); ++i) {
                scene.reportChange(bench::kLocationsPerLight);
                if (cold) evictCaches();
                row->samples.straight.push_back(spanOf([&] { component.getLights(); }) / locations);
                row->samples.host.push_back(0.0);
                if (cold) evictCaches();
                row->samples.floor.push_back(spanOf([&] { walkFloor.walk(); }) / locations);
            }
        }
        rebuild.push_back(std::move(rebuildRow));
        rebuild.push_back(std::move(coldRow));
    }
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    countBlock(block, 1);
    return block;
}
void operator delete(void* block) noexcept {
    countBlock(block, -1);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

int main(int argc, char** argv) {
    // `--no-million` stops at 100,000 locations, for a run of half a minute.
    const bool noMillion = argc > 1 && std::string(argv[1]) == "--no-million";
    std::printf(
        "Thread CPU time per item, the host's share taken out; ratios of the least and of the "
        "median\nover the repetitions, the verdict on the median\n");
    std::printf("Counting a host call's time adds %.1f ns to it\n", nanoseconds(countingCost()));
    printHeader();
    std::vector<Row> draw;
    std::vector<Row> picking;
    handlesRows(draw, picking);
    for (const Row& row : draw) printRow(row);
    for (const Row& row : picking) printRow(row);

    std::vector<Row> ingest;
    std::vector<Row> rebuild;
    std::vector<HeapRow> heap;
    locationRows(ingest, rebuild, heap, noMillion ? kLocationCounts[1] : kLocationCounts[2]);
    for (const Row& row : ingest) printRow(row);
    for (const Row& row : rebuild) printRow(row);

    std::printf("\nPer location at %zu over %zu\n", ingest.back().items, ingest.front().items);
    printGrowth("new location event", ingest.front(), ingest.back());
    printGrowth("light list rebuild, warm", rebuild[0], rebuild[rebuild.size() - 2]);
    printGrowth("light list rebuild, cold", rebuild[1], rebuild.back());

    std::printf("\nHeap bytes per location\n%-32s %9s %9s %8s %9s %7s  %-8s %s\n", "", "locations",
                "plugin", "host", "floor", "ratio", "goal", "verdict");
    for (const HeapRow& row : heap) {
        const double ratio = row.plugin / row.floor;
        std::printf("%-32s %9zu %9.0f %8.0f %9.0f %7.2f  <= %.1f   %s\n", "", row.locations,
                    row.plugin, row.host, row.floor, ratio, kHeapGoal, verdict(ratio <= kHeapGoal));
    }
    return 0;
}

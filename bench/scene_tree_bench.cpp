// The location tree's insertion and breadth-first walk, each timed beside a floor
// measured in the same run: the same work on a plain unordered map of paths.
// "ratio" is tree time over floor time.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/support/seconds_of.h"
#include "scene/sorrel_scene_tree.h"

using bench::secondsOf;

namespace {

constexpr std::size_t childrenPerLocation = 8;
constexpr double microsecondsPerSecond = 1e6;

// About the size of a light's record, so that node allocation weighs as it does.
struct Payload {
    double values[32] = {};
};

using Tree = UTIL::SceneTree::SorrelSceneTree<Payload>;
using FloorMap = std::unordered_map<std::string, Payload>;
/// "/root" and its descendants, level by level, so that parents come first.
std::vector<std::string> makePaths(std::size_t count) {
    std::vector<std::string> paths{"/root"};
    for (std::size_t parent = 0; paths.size() < count; ++parent) {
        for (std::size_t child = 0; child < childrenPerLocation && paths.size() < count; ++child) {
            paths.push_back(paths[parent] + "/location" + std::to_string(child));
        }
    }
    return paths;
}

void report(benchmark::State& state, double treeSeconds, double floorSeconds) {
    state.counters["floor_us"] = benchmark::Counter(floorSeconds * microsecondsPerSecond,
                                                    benchmark::Counter::kAvgIterations);
    state.counters["ratio"] = treeSeconds / floorSeconds;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void insertPaths(benchmark::State& state) {
    const std::vector<std::string> paths = makePaths(static_cast<std::size_t>(state.range(0)));
    double treeSeconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        Tree tree;
        const double treeTime = secondsOf([&] {
            for (const std::string& path : paths) {
                benchmark::DoNotOptimize(tree.insert(path, /* createMissingParents = */ false));
            }
        });
        FloorMap floor;
        floorSeconds += secondsOf([&] {
            for (const std::string& path : paths) {
                benchmark::DoNotOptimize(floor.try_emplace(path));
            }
        });
        treeSeconds += treeTime;
        state.SetIterationTime(treeTime);
    }
    report(state, treeSeconds, floorSeconds);
}

void walkBreadthFirst(benchmark::State& state) {
    const std::vector<std::string> paths = makePaths(static_cast<std::size_t>(state.range(0)));
    Tree tree;
    FloorMap floor;
    for (const std::string& path : paths) {
        tree.insert(path, /* createMissingParents = */ false);
        floor.try_emplace(path);
    }
    double treeSeconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        const double treeTime = secondsOf([&] {
            for (const auto& node : tree.walk(tree.find("/root"))) {
                benchmark::DoNotOptimize(node.data.values[0]);
            }
        });
        floorSeconds += secondsOf([&] {
            for (const auto& entry : floor) benchmark::DoNotOptimize(entry.second.values[0]);
        });
        treeSeconds += treeTime;
        state.SetIterationTime(treeTime);
    }
    report(state, treeSeconds, floorSeconds);
}

BENCHMARK(insertPaths)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(walkBreadthFirst)
    ->Arg(10000)
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

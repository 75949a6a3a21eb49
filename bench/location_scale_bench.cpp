// The delegate component at 10,000, 100,000 and 1,000,000 locations: new
// locations ingested and the light list rebuilt after one change, each beside
// its floor timed in the same run (an unordered map of the same paths, a walk
// over a bare pointer tree), and the heap bytes each location holds, counted
// by the allocation functions below: the plugin's, the host's (what it
// allocates during its calls, such as each location's picking group), and the
// floor map's.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "bench/support/host_share.h"
#include "bench/support/location_scene.h"
#include "bench/support/seconds_of.h"
#include "scene/light_component.h"

using bench::secondsOf;

namespace {

/// Live heap bytes (usable sizes) by who allocated or freed them.
struct HeapCount {
    std::int64_t plugin = 0;
    std::int64_t host = 0;
};
HeapCount heap;

void count(void* block, std::int64_t sign) {
    if (block == nullptr) return;
    const auto bytes = static_cast<std::int64_t>(malloc_usable_size(block));
    (bench::insideHost() ? heap.host : heap.plugin) += sign * bytes;
}

void ingestAndRebuild(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    const std::vector<std::string> paths = bench::makePaths(size);
    const double locations = static_cast<double>(size);
    for (auto _ : state) {
        bench::LocationScene scene(paths);
        const HeapCount before = heap;
        const double ingest = secondsOf([&] { scene.ingest(); });
        BeamwrightLayerVDC& component = scene.component();
        component.getLights();
        const HeapCount after = heap;
        scene.reportChange(bench::kLocationsPerLight);
        const double rebuild = secondsOf([&] { component.getLights(); });

        bench::IngestFloor ingestFloor(paths);
        const std::int64_t floorBefore = heap.plugin;
        const double floorIngest = secondsOf([&] { ingestFloor.ingest(); });
        const std::int64_t floorBytes = heap.plugin - floorBefore;
        bench::WalkFloor walkFloor(paths);
        walkFloor.walk();
        const double floorRebuild = secondsOf([&] { walkFloor.walk(); });

        state.SetIterationTime(ingest);
        state.counters["ingest_ratio"] = ingest / floorIngest;
        state.counters["rebuild_ratio"] = rebuild / floorRebuild;
        state.counters["plugin_bytes_per_location"] =
            static_cast<double>(after.plugin - before.plugin) / locations;
        state.counters["host_bytes_per_location"] =
            static_cast<double>(after.host - before.host) / locations;
        state.counters["floor_bytes_per_location"] = static_cast<double>(floorBytes) / locations;
    }
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    count(block, 1);
    return block;
}
void operator delete(void* block) noexcept {
    count(block, -1);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

BENCHMARK(ingestAndRebuild)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();

// BeamwrightCOIHandlesLayer's two passes over many lights with the driver taken
// out, each beside its floor measured in the same run: the same GL calls made
// from values worked out beforehand (bench/support/handles_scene.h). "ratio" is
// layer time over floor time; `make bench-instructions` counts the same passes
// in instructions, which do not swing with the machine's load.

#include <benchmark/benchmark.h>

#include "bench/support/handles_scene.h"
#include "bench/support/seconds_of.h"

using bench::secondsOf;

namespace {

constexpr double kNanosecondsPerSecond = 1e9;
/// The plugin's own instructions a light may cost; the ratio here is in time.
constexpr double kGoalInstructionsPerLight = 1000.0;

template <class Prepare, class Pass, class FloorPass>
void measure(benchmark::State& state, Prepare prepare, Pass pass, FloorPass floorPass) {
    bench::HandlesScene scene(static_cast<int>(state.range(0)));
    const bench::HandlesFloor floor(scene);
    const double lights = static_cast<double>(scene.lightCount());
    prepare(scene);
    pass(scene);
    double seconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        prepare(scene);
        const double time = secondsOf([&] { pass(scene); });
        floorSeconds += secondsOf([&] { floorPass(floor); });
        seconds += time;
        state.SetIterationTime(time);
    }
    const double perLight =
        kNanosecondsPerSecond / (lights * static_cast<double>(state.iterations()));
    state.counters["ns_per_light"] = seconds * perLight;
    state.counters["floor_ns_per_light"] = floorSeconds * perLight;
    state.counters["ratio"] = seconds / floorSeconds;
    state.counters["goal_instr_per_light"] = kGoalInstructionsPerLight;
}

void drawPass(benchmark::State& state) {
    measure(
        state, [](bench::HandlesScene&) {}, [](bench::HandlesScene& scene) { scene.drawPass(); },
        [](const bench::HandlesFloor& floor) { floor.drawPass(); });
}

void pickingPass(benchmark::State& state) {
    measure(
        state, [](bench::HandlesScene& scene) { scene.startPicking(); },
        [](bench::HandlesScene& scene) { scene.pickingPass(); },
        [](const bench::HandlesFloor& floor) { floor.pickingPass(); });
}

}  // namespace

BENCHMARK(drawPass)->Arg(10000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(pickingPass)->Arg(10000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();

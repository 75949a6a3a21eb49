// Matrix inverse (affine and general) and the placement of one point, each
// reported as a ratio to a plain 4x4 multiply timed in the same run
// ("per_multiply": 1.0 costs as much as one multiply).

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>

#include "placement/placement_math.h"
#include "support/vector_matrix.h"

using namespace Tessera::Sorrel::ViewerUtils;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFloorBatches = 7;
constexpr int kFloorBatchSize = 200000;

const Mat4d kAffine({0.8, 0.1, -0.3, 0, -0.2, 0.9, 0.4, 0, 0.5, -0.1, 1.1, 0, 3, -2, 7, 1});
const Mat4d kProjective({0.8, 0.1, -0.3, 0.2, -0.2, 0.9, 0.4, 0, 0.5, -0.1, 1.1, -0.4, 3, -2, 7,
                         1});

double secondsSince(const Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Seconds per plain multiply, the best of several batches, measured once per run.
double multiplyFloorSeconds() {
    static const double floor = [] {
        double best = std::numeric_limits<double>::max();
        for (int batch = 0; batch < kFloorBatches; ++batch) {
            Mat4d a = kAffine;
            const Clock::time_point start = Clock::now();
            for (int i = 0; i < kFloorBatchSize; ++i) {
                benchmark::DoNotOptimize(a);
                Mat4d product = multiply(a, kProjective);
                benchmark::DoNotOptimize(product);
            }
            best = std::min(best, secondsSince(start) / kFloorBatchSize);
        }
        return best;
    }();
    return floor;
}

/// Runs `operation` in the benchmark loop and reports its time per multiply.
template <typename Operation>
void runAgainstFloor(benchmark::State& state, Operation operation) {
    const double floor = multiplyFloorSeconds();
    const Clock::time_point start = Clock::now();
    for (auto _ : state) operation();
    const double perOperation = secondsSince(start) / static_cast<double>(state.iterations());
    state.counters["per_multiply"] = perOperation / floor;
}

void BM_Multiply(benchmark::State& state) {
    Mat4d a = kAffine;
    runAgainstFloor(state, [&] {
        benchmark::DoNotOptimize(a);
        Mat4d product = multiply(a, kProjective);
        benchmark::DoNotOptimize(product);
    });
}

/// Affine matrices go through the cofactors, all others through Gauss-Jordan.
void BM_Inverse(benchmark::State& state, const Mat4d& matrix) {
    Mat4d m = matrix;
    runAgainstFloor(state, [&] {
        benchmark::DoNotOptimize(m);
        Mat4d inverted = inverse(m);
        benchmark::DoNotOptimize(inverted);
    });
}

/// One snapped point placed by the costliest formula, then turned into the
/// rotation of a new package.
void BM_PlaceSpecularAndRotate(benchmark::State& state) {
    Vec3d point{1.0, 2.0, 3.0};
    const Vec3d normal = normalizedOrZero({0.2, 1.0, -0.3});
    const Vec3d eye{-4.0, 6.0, 10.0};
    constexpr double kDistance = 5.0;
    runAgainstFloor(state, [&] {
        benchmark::DoNotOptimize(point);
        const auto pose = placeLight(PlacementMode::ModeSpecular, point, normal, eye, kDistance);
        Vec3d degrees = rotationDegreesForDirection(pose->direction);
        benchmark::DoNotOptimize(degrees);
    });
}

void BM_PlaceNormal(benchmark::State& state) {
    Vec3d point{1.0, 2.0, 3.0};
    const Vec3d normal{0.0, 1.0, 0.0};
    constexpr double kDistance = 5.0;
    runAgainstFloor(state, [&] {
        benchmark::DoNotOptimize(point);
        auto pose = placeLight(PlacementMode::ModeNormal, point, normal, {}, kDistance);
        benchmark::DoNotOptimize(pose);
    });
}

}  // namespace

BENCHMARK(BM_Multiply);
BENCHMARK_CAPTURE(BM_Inverse, affine, kAffine);
BENCHMARK_CAPTURE(BM_Inverse, general, kProjective);
BENCHMARK(BM_PlaceNormal);
BENCHMARK(BM_PlaceSpecularAndRotate);

BENCHMARK_MAIN();

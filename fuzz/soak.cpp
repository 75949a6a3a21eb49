// The soak: Beamwright.so in the stand-in viewer for a million location
// events (by default), under AddressSanitizer, with draws, picker passes and
// hover moves in between. The lights of the scene move, change their
// attributes, are excluded and included, removed and made anew, and the
// selection changes. At the end the live references must be back where they
// were before the viewer stood, and resident memory must have stayed flat
// (within kFlatPercent) across the second half of the events.
//
//   soak [EVENTS]

#include <GL/glew.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "fuzz/host_counts.h"
#include "fuzz/loaded_plugin.h"
#include "host/core/names.h"
#include "host/core/plugin_library.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer_stage.h"

namespace {

using sorrel::AttrRef;

constexpr long kDefaultEvents = 1000000;
constexpr int kLights = 48;
constexpr std::int32_t kViewportSize = 128;  // pixels, both sides
constexpr long kEventsPerDraw = 100;
constexpr long kEventsPerPick = 250;
constexpr int kRssSamples = 20;
constexpr double kFlatPercent = 3.0;

std::string lightPath(int index) { return "/root/world/lgt/light" + std::to_string(index); }

AttrRef lightAttributes(long serial) {
    const double distance = 1.0 + static_cast<double>(serial % 7);
    const float red = static_cast<float>(serial % 11) / 10.0f;
    return sorrel::groupAttr(
        {{sorrel::names::kType, sorrel::stringAttr(sorrel::names::kLightType)},
         {sorrel::names::kGeometry,
          sorrel::groupAttr({{sorrel::names::kCenterOfInterest, sorrel::doubleAttr(distance)}})},
         {"viewer",
          sorrel::groupAttr(
              {{"default", sorrel::groupAttr(
                               {{"drawOptions",
                                 sorrel::groupAttr(
                                     {{"color", sorrel::floatsAttr({red, 0.5f, 1.0f})}})}})}})}});
}

/// A light standing somewhere over the floor, turned by the serial.
sorrel::Matrix lightPlace(long serial) {
    const double x = static_cast<double>(serial % 13) - 6.0;
    const double z = static_cast<double>(serial % 9) - 4.0;
    return {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, x, 3.0 + static_cast<double>(serial % 3), z, 1};
}

AttrRef mouseMove(std::int32_t x, std::int32_t y) { return sorrel::hover(x, y); }

/// Resident memory of this process, in KiB.
long residentKiB() {
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

const sorrel::PluginLibrary& plugin() {
    static const sorrel::PluginLibrary library(BEAMWRIGHT_PLUGIN_PATH);
    return library;
}

struct Figures {
    long events = 0;
    long draws = 0;
    long pickerPasses = 0;
    long hoverMoves = 0;
    std::vector<long> rssKiB;              // one sample after each equal part of the events
    std::vector<std::int64_t> references;  // live references, sampled with the memory
};

constexpr long kEventKinds = 7;
constexpr long kEventsPerSelection = 8;

/// One location event of the kind the serial picks.
void sendLocationEvent(sorrel::ViewerDelegate& delegate, long serial) {
    const std::string path = lightPath(static_cast<int>(serial % kLights));
    switch (serial % kEventKinds) {
        case 0:
            return delegate.putLocation(path, lightAttributes(serial), lightPlace(serial));
        case 1:
            return delegate.setExcluded(path, serial % (2 * kEventKinds) == 1);
        case 2:  // removed here, made anew by the next event
            return delegate.removeLocation(path);
        case 3: {
            const std::string removed = lightPath(static_cast<int>((serial - 1) % kLights));
            return delegate.putLocation(removed, lightAttributes(serial), lightPlace(serial));
        }
        default:
            return delegate.moveLocation(path, lightPlace(serial));
    }
}

Figures soak(long events) {
    const sorrel::GLContext gl(kViewportSize, kViewportSize);
    sorrel::ViewerStage stage(kViewportSize, kViewportSize, {2, 9, 12}, {0, 0, 0}, &plugin());
    sorrel::Picking picking(stage.viewport(), gl);
    picking.install();
    stage.scene().meshes().emplace("floor", sorrel::Mesh::plane(20, 20, 4));
    sorrel::ViewerDelegate& delegate = stage.delegate();
    delegate.putLightRoots();
    for (int i = 0; i < kLights; ++i)
        delegate.putLocation(lightPath(i), lightAttributes(i), lightPlace(i));
    sorrel::LayerObject& handles = *stage.viewport().pluginLayer(sorrel::names::kHandlesLayer);
    stage.viewport()
        .pluginLayer(sorrel::names::kPlacementLayer)
        ->setOption(sorrel::names::kEnabled, sorrel::intAttr(1));

    Figures figures;
    const long sampleEvery = std::max(1L, events / kRssSamples);
    for (long serial = 0; serial < events; ++serial) {
        sendLocationEvent(delegate, serial);
        ++figures.events;
        if (serial % kEventsPerSelection == 0)
            stage.select({lightPath(static_cast<int>(serial % kLights)),
                          lightPath(static_cast<int>((serial / kEventsPerSelection) % kLights))});
        if (serial % kEventsPerDraw == 0) {
            gl.makeCurrent();
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            handles.draw();
            ++figures.draws;
        }
        if (serial % kEventsPerPick == 0) {
            const auto x = static_cast<std::int32_t>(serial % kViewportSize);
            const auto y = static_cast<std::int32_t>((serial / kViewportSize) % kViewportSize);
            picking.pickAll({x, y, 1, 1});
            ++figures.pickerPasses;
            handles.event(mouseMove(x, y));  // a picker pass of every layer, as the hover asks
            ++figures.hoverMoves;
        }
        if ((serial + 1) % sampleEvery == 0) {
            figures.rssKiB.push_back(residentKiB());
            figures.references.push_back(fuzzing::HostCounts::now().references);
        }
    }
    gl.makeCurrent();
    return figures;
}

}  // namespace

int main(int argc, char** argv) {
    const long events = argc > 1 ? std::atol(argv[1]) : kDefaultEvents;
    fuzzing::loadPlugin();
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    const auto start = std::chrono::steady_clock::now();
    const Figures figures = soak(events);
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const fuzzing::HostCounts after = fuzzing::HostCounts::now();

    std::printf(
        "soak: %ld location events, %ld draws, %ld picker passes, %ld hover moves in %.0f s\n",
        figures.events, figures.draws, figures.pickerPasses, figures.hoverMoves, seconds);
    std::printf(
        "live references: %lld before, %lld after; sample blocks %lld, group builders %lld\n",
        static_cast<long long>(before.references), static_cast<long long>(after.references),
        static_cast<long long>(after.sampleBlocks - before.sampleBlocks),
        static_cast<long long>(after.groupBuilders - before.groupBuilders));
    if (!figures.references.empty()) {
        const auto [fewest, most] =
            std::minmax_element(figures.references.begin(), figures.references.end());
        std::printf("live references while the viewer stood: %lld to %lld\n",
                    static_cast<long long>(*fewest), static_cast<long long>(*most));
    }
    std::printf("resident memory (MiB) after each %d-th of the events:", kRssSamples);
    for (const long kib : figures.rssKiB) std::printf(" %.1f", static_cast<double>(kib) / 1024.0);
    std::printf("\n");

    const std::vector<long> secondHalf(figures.rssKiB.begin() + figures.rssKiB.size() / 2,
                                       figures.rssKiB.end());
    double growth = 0.0;
    if (!secondHalf.empty()) {
        const auto [low, high] = std::minmax_element(secondHalf.begin(), secondHalf.end());
        growth = 100.0 * static_cast<double>(*high - *low) / static_cast<double>(*low);
        std::printf("second half: %.1f to %.1f MiB, %.2f %% apart (allowed %.1f %%)\n",
                    static_cast<double>(*low) / 1024.0, static_cast<double>(*high) / 1024.0, growth,
                    kFlatPercent);
    }

    fuzzing::expectBalanced(before);
    if (growth > kFlatPercent) {
        std::fprintf(stderr, "soak: resident memory grew in the second half\n");
        return 1;
    }
    return 0;
}

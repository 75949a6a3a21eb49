// BeamwrightCOIHandlesLayer passes over many lights on the headless GL context,
// each beside a floor measured in the same run: the same handles drawn by hand
// with the same programs and meshes, their world matrices worked out
// beforehand, so that only the layer's own work (finding the component, the
// light list, the matrices of each handle, the GL state of a pass) separates
// the two. "ratio" is layer time over floor time; both end with glFinish.

#include <GL/glew.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handle_mesh_data.h"
#include "handles/handle_programs.h"
#include "handles/handles_layer.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/picking.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewer_tables.h"
#include "host/viewer/viewport.h"
#include "scene/light_component.h"
#include "support/screen_constant_size.h"
#include "tests/support/light_attributes.h"

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr int kSurfaceSize = 512;  // pixels
constexpr int kLightsPerRow = 40;
constexpr double kSpacing = 0.5;  // world units between centres of interest
constexpr double kEyeDistance = 30.0;
constexpr double kHandleSizePixels = 120.0;
constexpr double kMicrosecondsPerSecond = 1e6;

using Clock = std::chrono::steady_clock;

/// SORREL_ROOT as given, or else the build's shader tree.
std::string sorrelRoot() {
    if (const char* root = std::getenv("SORREL_ROOT")) return root;
    return BEAMWRIGHT_RESOURCES_DIR;
}

template <class Work>
double secondsOf(Work&& work) {
    const Clock::time_point start = Clock::now();
    work();
    glFinish();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A viewport looking at a grid of lights, with the handles layer set up and on.
class Viewer {
public:
    explicit Viewer(int lights) : gl(kSurfaceSize, kSurfaceSize) {
        sorrel::PluginHost::instance().allowAll();
        auto* const record = reinterpret_cast<PluginHost*>(sorrel::viewerHostRecord());
        ViewportLayerPluginBase::setHost(record);
        ViewerDelegateComponentPluginBase::setHost(record);
        setenv("SORREL_ROOT", sorrelRoot().c_str(), /* overwrite = */ 1);

        delegate.addComponent("BeamwrightLayerVDC",
                              reinterpret_cast<void* const*>(&componentSuite));
        viewport = std::make_unique<sorrel::Viewport>(delegate, kSurfaceSize, kSurfaceSize);
        const double eye[3] = {0.0, 0.0, kEyeDistance};
        const double target[3] = {0.0, 0.0, 0.0};
        viewport->lookAt(eye, target);
        layer = &viewport->addPluginLayer("BeamwrightCOIHandlesLayer",
                                          reinterpret_cast<void* const*>(&layerSuite));
        layer->setup();
        layer->setOption("Enabled", sorrel::intAttr(1));
        picking = std::make_unique<sorrel::Picking>(*viewport, gl);
        picking->install();

        delegate.putLocation("/root", testing_support::groupAttributes());
        const sorrel::AttrRef light = testing_support::lightAttributes(/* distance = */ 2.0);
        const double half = kLightsPerRow * kSpacing / 2.0;
        for (int i = 0; i < lights; ++i) {
            const double x = (i % kLightsPerRow) * kSpacing - half;
            const double y = (i / kLightsPerRow) * kSpacing - half;
            delegate.putLocation("/root/l" + std::to_string(i), light,
                                 sorrel::translationMatrix(x, y, 0.0));
        }
    }
    ~Viewer() {
        picking.reset();
        layer->cleanup();
        viewport.reset();
        delegate.removeComponents();
    }

    BeamwrightLayerVDC& component() {
        auto* const handle =
            static_cast<PluginObjectHandle*>(delegate.component("BeamwrightLayerVDC")->handle());
        return dynamic_cast<BeamwrightLayerVDC&>(pluginObject<ViewerDelegateComponent>(handle));
    }

    sorrel::GLContext gl;
    sorrel::ViewerDelegate delegate;
    std::unique_ptr<sorrel::Viewport> viewport;
    sorrel::LayerObject* layer = nullptr;
    std::unique_ptr<sorrel::Picking> picking;

private:
    const ViewportLayerPluginSuite layerSuite =
        buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>);
    const ViewerDelegateComponentPluginSuite componentSuite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
};

/// The handles drawn by hand: one stem and one head for each light, the
/// matrices known beforehand.
class Floor {
public:
    explicit Floor(Viewer& viewer) {
        buildHandlePrograms(sorrelRoot() + kHandleShaderStemBelowRoot, solid, line);
        const HandleMeshData headData = arrowHeadData();
        const HandleMeshData stemData = arrowStemData();
        head.build(headData.positions, headData.normals, headData.indices, {});
        stemMesh.build(stemData.positions, stemData.normals, stemData.indices, {});

        sorrel::Viewport& viewport = *viewer.viewport;
        view = Mat4d(viewport.view.data());
        projection = Mat4d(viewport.projection.data());
        const double* const origin = viewport.camera().origin;
        const Vec3d eye = {origin[0], origin[1], origin[2]};
        for (const LightLocationData* light : viewer.component().getLights()) {
            const double size = screenConstantSize(kSurfaceSize, kSurfaceSize, view, projection,
                                                   light->centerOfInterest, kHandleSizePixels);
            Mat4d scaleAndMove;
            for (int axis = 0; axis < 3; ++axis) {
                scaleAndMove[axis][axis] = size;
                scaleAndMove[3][axis] = light->centerOfInterest[axis];
            }
            worlds.push_back(
                multiply(rotationFromTo({0, 0, 1}, eye - light->centerOfInterest, light->direction),
                         scaleAndMove));
        }
    }

    void draw() {
        for (GLShaderProgram* program : {&solid, &line}) {
            program->use();
            program->setUniform("viewMatrix", view.data());
            program->setUniform("projectionMatrix", projection.data());
        }
        for (const Mat4d& world : worlds) {
            line.use();
            line.setUniform("worldMatrix", world.data());
            stemMesh.drawLines(/* blend = */ false);
            solid.use();
            solid.setUniform("worldMatrix", world.data());
            head.drawTriangles(/* blend = */ false);
        }
        glUseProgram(0);
    }

private:
    GLShaderProgram solid;
    GLShaderProgram line;
    HandleMesh head;
    HandleMesh stemMesh;
    Mat4d view;
    Mat4d projection;
    std::vector<Mat4d> worlds;
};

void report(benchmark::State& state, double seconds, double floorSeconds, std::size_t lights) {
    const double perIteration = 1.0 / static_cast<double>(state.iterations());
    state.counters["lights"] = static_cast<double>(lights);
    state.counters["floor_us"] = floorSeconds * kMicrosecondsPerSecond * perIteration;
    state.counters["ratio"] = seconds / floorSeconds;
}

void clearSurface() {
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

/// The layer's draw pass.
void drawPass(benchmark::State& state) {
    Viewer viewer(static_cast<int>(state.range(0)));
    Floor floor(viewer);
    double seconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        clearSurface();
        const double time = secondsOf([&] { viewer.layer->draw(); });
        clearSurface();
        floorSeconds += secondsOf([&] { floor.draw(); });
        seconds += time;
        state.SetIterationTime(time);
    }
    report(state, seconds, floorSeconds, viewer.component().getLights().size());
}

/// A one-pixel pick of the whole handles layer by the host, as a hover search
/// makes it: the picking pass, scissored, and the read-back.
void pickOnePixel(benchmark::State& state) {
    Viewer viewer(static_cast<int>(state.range(0)));
    Floor floor(viewer);
    const sorrel::PickArea centre = {kSurfaceSize / 2, kSurfaceSize / 2};
    double seconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        const double time =
            secondsOf([&] { benchmark::DoNotOptimize(viewer.picking->pickAll(centre)); });
        clearSurface();
        floorSeconds += secondsOf([&] { floor.draw(); });
        seconds += time;
        state.SetIterationTime(time);
    }
    report(state, seconds, floorSeconds, viewer.component().getLights().size());
}

}  // namespace

BENCHMARK(drawPass)->Arg(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(pickOnePixel)->Arg(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();

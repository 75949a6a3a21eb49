// Whole sessions of up to 160 steps in the stand-in viewer, on llvmpipe: the
// plugin's objects created, set up, cleaned up and destroyed in every order a
// host may choose; events, options, draws and picker passes on whatever lives;
// scene changes, location and USD events and selections reaching the
// component; viewports from 1 x 1 pixels, with singular or NaN matrices; a
// layer of another library among the plugin's; and a host that now and then
// refuses a table, finds nothing at a lookup, answers no world transform or
// one of the wrong type, or pick ids of 0. Only what a host may legally send:
// setup, draw, picking and cleanup with the context current, no entry on a
// destroyed object, no event or draw before setup.
//
// Hover runs on handles only here, where the handles layer looks for itself
// among layers that may belong to another library; the event target fuzzes
// the search over every layer.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "fuzz/loaded_plugin.h"
#include "host/core/names.h"
#include "host/core/plugin_host.h"
#include "host/viewer/foreign_objects.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/picking.h"
#include "host/viewer/viewer_faults.h"
#include "host/viewer_stage.h"
#include "vrt/stage.h"

namespace {

using fuzzing::FuzzedValues;
using sorrel::AttrRef;

constexpr int kMostSteps = 160;
constexpr std::int32_t kLargestViewport = 96;  // pixels
constexpr std::int32_t kSurfaceSize = 96;      // pixels of the context's surface
const std::vector<std::string> kLights = {"/root/world/lgt/key", "/root/world/lgt/fill",
                                          "/root/world/lgt/key/child"};
const std::vector<std::string> kTables = {"PluginManager",
                                          "Logging",
                                          "OptionIdGeneratorHost",
                                          "AttributeHost",
                                          "ViewportLayerHost",
                                          "ViewportHost",
                                          "ViewportCameraHost",
                                          "ViewerDelegateHost",
                                          "ViewerDelegateComponentHost",
                                          "ManipulatorHost",
                                          "ManipulatorHandleHost"};

const sorrel::GLContext& context() {
    static const sorrel::GLContext gl(kSurfaceSize, kSurfaceSize);
    return gl;
}

/// Where the host is with one plugin layer.
struct LayerLife {
    const char* name;
    bool exists = false;
    bool ready = false;  // set up and not cleaned up since
};

class Session {
public:
    explicit Session(FuzzedValues& in)
        : in_(in),
          stage_(in.inRange(1, kLargestViewport), in.inRange(1, kLargestViewport), {2, 9, 12},
                 {0, 0, 0}),
          picking_(stage_.viewport(), context()) {
        stage_.scene().meshes().emplace("floor", sorrel::Mesh::plane(20, 20, 4));
        if (in_.flip())
            stage_.viewport().addPluginLayer("OtherLibraryLayer", sorrel::foreignLayerSuite());
        // A layer's pick is answered by a picker pass of that layer, if it is set up.
        stage_.viewport().setPickHandler([this](const std::string& name, std::int32_t x,
                                                std::int32_t y, std::int32_t w, std::int32_t h,
                                                bool, float* depth) {
            return answerPick(name, {x, y, w, h}, depth);
        });
    }

    void run() {
        addComponent();
        furnish();
        for (int step = 0; step < kMostSteps && !in_.exhausted(); ++step)
            guarded([this] { act(); });
        tearDown();
    }

private:
    void act() {
        switch (in_.inRange(0, 15)) {
            case 0:
                return changeLayerLife(in_.flip() ? handles_ : placement_);
            case 1:
                return component_ ? removeComponent() : addComponent();
            case 2:
            case 3:
            case 4:
                return sendEvent();
            case 5:
                return setOption();
            case 6:
                return draw();
            case 7:
                return pickerPass();
            case 8:
            case 9:
                return changeScene();
            case 10:
                return sendUsd();
            case 11:
                return select();
            case 12:
                return changeViewport();
            case 13:
                return changeFaults();
            default:
                return sendRawLocationEvent();
        }
    }

    /// Runs a step; the camera wrapper's error, which a refused camera table
    /// sends through an entry to the host, ends only the step.
    static void guarded(const std::function<void()>& step) {
        try {
            step();
        } catch (const std::runtime_error&) {
        }
    }

    sorrel::LayerObject* layer(const LayerLife& life) {
        return life.exists ? stage_.viewport().pluginLayer(life.name) : nullptr;
    }

    void changeLayerLife(LayerLife& life) {
        sorrel::Viewport& viewport = stage_.viewport();
        if (!life.exists) {
            viewport.addPluginLayer(life.name, fuzzing::suiteOf(life.name));
            life.exists = true;
            return;
        }
        context().makeCurrent();
        switch (in_.inRange(0, 2)) {
            case 0:  // a second setup without cleanup is allowed
                layer(life)->setup();
                life.ready = true;
                return;
            case 1:  // so is a second cleanup
                layer(life)->cleanup();
                life.ready = false;
                return;
            default:
                if (life.ready) layer(life)->cleanup();
                viewport.removePluginLayer(life.name);
                life = LayerLife{life.name};
        }
    }

    void addComponent() {
        stage_.delegate().addComponent(sorrel::names::kLightComponent,
                                       fuzzing::suiteOf(sorrel::names::kLightComponent));
        component_ = true;
    }
    void removeComponent() {
        stage_.delegate().removeComponent(sorrel::names::kLightComponent);
        component_ = false;
    }

    LayerLife& anyLayer() { return in_.flip() ? handles_ : placement_; }

    void sendEvent() {
        const LayerLife& life = anyLayer();
        if (!life.ready) return;
        const sorrel::Viewport& viewport = stage_.viewport();
        layer(life)->event(in_.event(viewport.width, viewport.height));
    }

    void setOption() {
        const LayerLife& life = anyLayer();
        if (!life.exists) return;
        const std::string& option = in_.pick(fuzzing::kOptionNames);
        if (in_.inRange(0, 3) == 0)
            layer(life)->getOption(option);
        else
            layer(life)->setOption(option, in_.optionValue(option));
    }

    void draw() {
        const LayerLife& life = anyLayer();
        if (!life.ready) return;
        context().makeCurrent();
        layer(life)->draw();
    }

    std::vector<sorrel::LayerObject*> readyLayers() {
        std::vector<sorrel::LayerObject*> ready;
        for (const LayerLife* life : {&handles_, &placement_})
            if (life->ready) ready.push_back(layer(*life));
        return ready;
    }

    void pickerPass() {
        const sorrel::Viewport& viewport = stage_.viewport();
        const bool onePixel = in_.flip();
        const sorrel::PickArea area{in_.pixel(viewport.width), in_.pixel(viewport.height),
                                    onePixel ? 1 : in_.inRange(0, viewport.width + 2),
                                    onePixel ? 1 : in_.inRange(0, viewport.height + 2)};
        picking_.pick(area, readyLayers(), in_.flip() ? AttrRef() : in_.attribute(2));
    }

    AttrRef answerPick(const std::string& name, const sorrel::PickArea& area, float* depth) {
        for (const LayerLife* life : {&handles_, &placement_}) {
            if (name != life->name || !life->ready) continue;
            const std::vector<sorrel::PickHit> hits = picking_.pick(area, {layer(*life)});
            if (hits.empty()) return AttrRef();
            *depth = std::min_element(hits.begin(), hits.end(), [](const auto& a, const auto& b) {
                         return a.depth < b.depth;
                     })->depth;
            return sorrel::pickedGroup(hits);
        }
        return AttrRef();
    }

    void furnish() {
        sorrel::ViewerDelegate& delegate = stage_.delegate();
        delegate.putLightRoots();
        for (const std::string& light : kLights)
            if (in_.inRange(0, 3) != 0)
                delegate.putLocation(light, in_.locationAttributes(), in_.matrix());
    }

    void changeScene() {
        sorrel::ViewerDelegate& delegate = stage_.delegate();
        const std::string path = in_.flip() ? in_.pick(kLights) : in_.path();
        switch (in_.inRange(0, 4)) {
            case 0:
                return delegate.moveLocation(path, in_.matrix());
            case 1:
                return delegate.removeLocation(path);
            case 2:
                return delegate.setExcluded(path, in_.flip());
            default:
                return delegate.putLocation(path, in_.locationAttributes(), in_.matrix());
        }
    }

    void sendRawLocationEvent() {
        sorrel::ComponentObject* component =
            stage_.delegate().component(sorrel::names::kLightComponent);
        if (component == nullptr) return;
        const AttrRef attributes = in_.locationAttributes();
        const AttrRef transform = in_.flip() ? in_.attribute(1) : AttrRef();
        component->locationEvent(in_.path(), attributes, transform, in_.any<std::uint32_t>(),
                                 in_.any<std::uint8_t>());
    }

    void sendUsd() {
        static const vrt::Token kLightApi(sorrel::names::kUsdLightApi);
        static const vrt::Token kCentreOfInterest(sorrel::names::kUsdCenterOfInterest);
        const vrt::Path path(in_.flip() ? "/World/Key" : in_.path());
        if (in_.inRange(0, 3) == 0) {
            usd_.removePrim(path);
            return stage_.delegate().sendUsdRemoval(path);
        }
        vrt::Prim prim = usd_.definePrim(path);
        if (in_.flip()) prim.applyApi(kLightApi);
        if (in_.flip()) prim.setAttr(kCentreOfInterest, vrt::Value(in_.real()));
        const sorrel::Matrix m = in_.matrix();
        prim.setLocalTransformation(lqm::Mat4<double>(m.data()));
        const std::uint32_t flags =
            in_.flip() ? sorrel::UsdFlags::kPrimAdded : sorrel::UsdFlags::kPrimChanged;
        stage_.delegate().sendUsdPrim(prim, flags | (in_.flip() ? sorrel::UsdFlags::kExcluded : 0),
                                      in_.real());
    }

    void select() {
        std::vector<std::string> paths;
        for (const std::string& light : kLights)
            if (in_.flip()) paths.push_back(light);
        if (in_.flip()) paths.push_back(in_.path());
        if (in_.flip())
            stage_.select(paths);
        else
            stage_.delegate().sendUsdSelection(paths);
    }

    void changeViewport() {
        sorrel::Viewport& viewport = stage_.viewport();
        switch (in_.inRange(0, 3)) {
            case 0:
                viewport.width = in_.inRange(1, kLargestViewport);
                viewport.height = in_.inRange(1, kLargestViewport);
                return;
            case 1:
                viewport.view = in_.matrix();
                return;
            case 2:
                viewport.projection = in_.matrix();
                return;
            default:
                for (double& c : viewport.camera().origin) c = in_.real();
        }
    }

    void changeFaults() {
        sorrel::ViewerFaults& faults = sorrel::viewerFaults();
        sorrel::PluginHost& host = sorrel::PluginHost::instance();
        switch (in_.inRange(0, 3)) {
            case 0:
                faults.nullLookups.clear();
                for (const sorrel::Lookup lookup : sorrel::kEveryLookup)
                    if (in_.inRange(0, 3) == 0) faults.nullLookups.insert(lookup);
                return;
            case 1:
                faults.worldTransform =
                    static_cast<sorrel::WorldTransformAnswer>(in_.inRange(0, 2));
                faults.zeroPickIds = in_.inRange(0, 3) == 0;
                return;
            case 2:
                return host.refuse(in_.pick(kTables));
            default:
                return host.allowAll();
        }
    }

    void tearDown() {
        sorrel::PluginHost::instance().allowAll();
        sorrel::viewerFaults().clear();
        context().makeCurrent();
        for (LayerLife* life : {&handles_, &placement_}) {
            if (!life->exists) continue;
            if (life->ready) layer(*life)->cleanup();
            stage_.viewport().removePluginLayer(life->name);
        }
        if (component_) removeComponent();
        stage_.viewport().setPickHandler(nullptr);
    }

    FuzzedValues& in_;
    sorrel::ViewerStage stage_;
    sorrel::Picking picking_;
    vrt::Stage usd_;
    LayerLife handles_{sorrel::names::kHandlesLayer};
    LayerLife placement_{sorrel::names::kPlacementLayer};
    bool component_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY", "1", /* overwrite = */ 1);
    fuzzing::loadPlugin();
    context();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        FuzzedValues in(data, size);
        Session(in).run();
    }
    fuzzing::expectBalanced(before);
    return 0;
}

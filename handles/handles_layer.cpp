// BeamwrightCOIHandlesLayer: setup and cleanup of its GL objects, the way to the
// light list, and its options.

#include "handles/handles_layer.h"

#include <cstdlib>
#include <string>

#include "frame/option_id.h"
#include "frame/own_plugin_instance.h"
#include "frame/sample_accessor.h"
#include "frame/wrappers.h"
#include "handles/handle_mesh_data.h"
#include "handles/handle_programs.h"
#include "scene/light_component.h"

using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::buildHandlePrograms;
using Tessera::Sorrel::ViewerUtils::kHandleShaderStemBelowRoot;

namespace {

constexpr const char* kComponentName = "BeamwrightLayerVDC";

void buildMesh(HandleMesh& mesh, const HandleMeshData& data) {
    mesh.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
}

}  // namespace

void BeamwrightCOIHandlesLayer::setup() {
    // Nothing is normalised: without SORREL_ROOT the stem starts at the file system's root.
    const char* const root = std::getenv("SORREL_ROOT");
    const std::string stem = std::string(root != nullptr ? root : "") + kHandleShaderStemBelowRoot;

    buildHandlePrograms(stem, solidProgram, lineProgram);

    buildMesh(arrowHead, arrowHeadData());
    buildMesh(arrowOutline, arrowOutlineData());
    buildMesh(arrowStem, arrowStemData());
    buildMesh(connectorLine, connectorLineData());
}

void BeamwrightCOIHandlesLayer::cleanup() {
    connectorLine.release();
    arrowStem.release();
    arrowOutline.release();
    arrowHead.release();
    lineProgram.cleanup();
    solidProgram.cleanup();
}

BeamwrightLayerVDC* BeamwrightCOIHandlesLayer::getDelegateComponent() {
    const std::shared_ptr<ViewerDelegateWrapper> delegate = getViewport()->getViewerDelegate();
    if (!delegate) return nullptr;
    const std::shared_ptr<ViewerDelegateComponentWrapper> component =
        delegate->getComponent(kComponentName);
    if (!component) return nullptr;
    // A component of another library under this name is not ours to cast.
    return ownComponentInstance<BeamwrightLayerVDC>(*component);
}

// ---- options ----

void BeamwrightCOIHandlesLayer::setOption(OptionId id, Attribute value) {
    static const OptionId kEnabled = getOptionId("Enabled");
    static const OptionId kManipulatorScale = getOptionId("Manipulator.Scale");
    static const OptionId kExcludedLocations =
        getOptionId("ViewportLayer.ExcludedLocationsPicking");

    // A value of the wrong type reads as the fallback and overwrites the field.
    if (id == kEnabled) {
        enabled = IntAttribute(value).getValue(0) != 0;
    } else if (id == kManipulatorScale) {
        setManipulatorScale(DoubleAttribute(value).getValue(1.0));
    } else if (id == kExcludedLocations) {
        setExcludedLocations(value);
    }
}

Attribute BeamwrightCOIHandlesLayer::getOption(OptionId id) {
    static const OptionId kIsUILayer = getOptionId("ViewportLayer.IsUILayer");
    if (id == kIsUILayer) return IntAttribute::create(1);
    return ViewportLayer::getOption(id);
}

void BeamwrightCOIHandlesLayer::setManipulatorScale(double requested) {
    // In this form a NaN ends as the upper limit.
    const double belowMax = kMaxManipulatorScale > requested ? requested : kMaxManipulatorScale;
    const double clamped = belowMax > kMinManipulatorScale ? belowMax : kMinManipulatorScale;
    if (clamped == manipulatorScale) return;
    manipulatorScale = clamped;
    getViewport()->setDirty(true);
}

void BeamwrightCOIHandlesLayer::setExcludedLocations(const Attribute& value) {
    // Replaced whole: another type, or no values, leaves the set empty.
    excludedLocations.clear();
    StringAttribute paths(value);
    if (!paths.isValid()) return;
    const SampleAccessor<const char*> samples(std::move(paths), kTimeZero);
    excludedLocations.reserve(static_cast<std::size_t>(samples.size()));
    // Hashed once here, so that a picking pass compares numbers only.
    for (std::int64_t i = 0; i < samples.size(); ++i)
        excludedLocations.insert(StringAttribute::create(samples[i]).hash().words[0]);
}

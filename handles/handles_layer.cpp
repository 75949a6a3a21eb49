// BeamwrightCOIHandlesLayer: setup and cleanup of its GL objects, the way to the
// light list, and its options.

#include "handles/handles_layer.h"

#include <cstdlib>
#include <string>

#include "frame/frame_names.h"
#include "frame/option_id.h"
#include "frame/own_plugin_instance.h"
#include "frame/sample_accessor.h"
#include "frame/wrappers.h"
#include "handles/handle_mesh_data.h"
#include "handles/handle_programs.h"
#include "handles/handles_names.h"
#include "scene/light_component.h"
#include "scene/scene_names.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::buildHandlePrograms;

namespace {

void buildMesh(HandleMesh& mesh, const HandleMeshData& data) {
    mesh.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
}

}  // namespace

void BeamwrightCOIHandlesLayer::setup() {
    // Nothing is normalised: without the root variable the stem starts at the file system's root.
    const char* const root = std::getenv(kSorrelRootVariable);
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
        delegate->getComponent(kLightComponentName);
    if (!component) return nullptr;
    // A component of another library under this name is not ours to cast.
    return ownComponentInstance<BeamwrightLayerVDC>(*component);
}

// ---- options ----

void BeamwrightCOIHandlesLayer::setOption(OptionId id, Attribute value) {
    static const OptionId kEnabled = getOptionId(kEnabledOption);
    static const OptionId kManipulatorScale = getOptionId(kManipulatorScaleOption);
    static const OptionId kExcludedLocations = getOptionId(kExcludedLocationsPickingOption);

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
    static const OptionId kIsUILayer = getOptionId(kIsUILayerOption);
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

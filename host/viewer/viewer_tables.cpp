#include "host/viewer/viewer_tables.h"

#include "host/core/attribute_model.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewer_faults.h"
#include "host/viewer/viewport.h"

namespace sorrel {

// Every function takes the object's host handle first; for a layer or
// component that is the slot the host keeps it in. A null host handle, which
// the plugin passes back after a lookup that found nothing, names no object.
struct ViewerTables {
    using Slot = Viewport::LayerSlot;
    using ComponentSlot = ViewerDelegate::ComponentSlot;

    static Viewport* viewport(void* h) { return static_cast<Viewport*>(h); }
    static ViewerDelegate* delegate(void* h) { return static_cast<ViewerDelegate*>(h); }
    static bool found(const void* h, Lookup lookup) {
        return h != nullptr && !viewerFaults().answersNothing(lookup);
    }
    static void nothing(void** h, void** p, const void** s) { ObjectTriple().writeTo(h, p, s); }

    // ---- "ViewportLayerHost" 2 ----
    static void layerViewport(void* layer, void** h, void** p, const void** s) {
        if (!found(layer, Lookup::kViewport)) return nothing(h, p, s);
        static_cast<Slot*>(layer)->viewport->triple().writeTo(h, p, s);
    }
    static std::uint64_t layerAddPickedAttr(void* layer, void* attribute) {
        if (viewerFaults().zeroPickIds) return 0;
        return static_cast<Slot*>(layer)->viewport->addPickedAttr(AttrRef::borrow(attribute));
    }
    static void* layerPick(void* layer, std::int32_t x, std::int32_t y, std::int32_t width,
                           std::int32_t height, std::int32_t flag, float* depth) {
        const Slot& slot = *static_cast<Slot*>(layer);
        return slot.viewport->pick(slot.name, x, y, width, height, flag != 0, depth).release();
    }

    // ---- "ViewportHost" 3 ----
    static void viewportDelegate(void* h, void** oh, void** p, const void** s) {
        if (!found(h, Lookup::kViewerDelegate)) return nothing(oh, p, s);
        viewport(h)->viewerDelegate().triple().writeTo(oh, p, s);
    }
    static void viewportCamera(void* h, void** oh, void** p, const void** s) {
        if (!found(h, Lookup::kCamera)) return nothing(oh, p, s);
        viewport(h)->camera().triple().writeTo(oh, p, s);
    }
    static std::int32_t viewportWidth(void* h) { return h != nullptr ? viewport(h)->width : 0; }
    static std::int32_t viewportHeight(void* h) { return h != nullptr ? viewport(h)->height : 0; }
    static void viewportSetDirty(void* h, std::uint8_t) {
        if (h != nullptr) viewport(h)->setDirty();
    }
    static void viewportLayerByName(void* h, const char* name, void** oh, void** p,
                                    const void** s) {
        if (!found(h, Lookup::kLayer)) return nothing(oh, p, s);
        ObjectTriple result;
        for (const auto& slot : viewport(h)->layers_)
            if (slot->name == name) result = slot->triple();
        result.writeTo(oh, p, s);
    }
    static void viewportLayerByIndex(void* h, std::uint32_t index, void** oh, void** p,
                                     const void** s) {
        if (!found(h, Lookup::kLayer)) return nothing(oh, p, s);
        const auto& layers = viewport(h)->layers_;
        (index < layers.size() ? layers[index]->triple() : ObjectTriple()).writeTo(oh, p, s);
    }
    static std::uint32_t viewportLayerCount(void* h) {
        return h != nullptr ? viewport(h)->numberOfLayers() : 0;
    }
    static const double* viewportViewMatrix(void* h) {
        return h != nullptr ? viewport(h)->view.data() : nullptr;
    }
    static const double* viewportProjection(void* h) {
        return h != nullptr ? viewport(h)->projection.data() : nullptr;
    }
    static void viewportManipulator(void* h, const char* name, void** oh, void** p,
                                    const void** s) {
        Manipulator* manipulator =
            found(h, Lookup::kManipulator) ? viewport(h)->manipulator(name) : nullptr;
        (manipulator != nullptr ? manipulator->triple() : ObjectTriple()).writeTo(oh, p, s);
    }

    // ---- "ViewportCameraHost" 2 ----
    static void cameraOrigin(void* h, double* x, double* y, double* z) {
        static const Camera kNoCamera;
        const Camera& camera = h != nullptr ? *static_cast<Camera*>(h) : kNoCamera;
        *x = camera.origin[0];
        *y = camera.origin[1];
        *z = camera.origin[2];
    }

    // ---- "ViewerDelegateHost" 4 ----
    static void* delegateAttributes(void* h, const char* path, std::uint32_t) {
        return h != nullptr ? delegate(h)->locationAttributes(path).release() : nullptr;
    }
    static void* delegateWorldTransform(void* h, const char* path, std::uint32_t) {
        if (h == nullptr) return nullptr;
        const auto world = delegate(h)->worldTransform(path);
        if (!world) return nullptr;
        switch (viewerFaults().worldTransform) {
            case WorldTransformAnswer::kNothing:
                return nullptr;
            case WorldTransformAnswer::kWrongType:
                return AttributeModel::instance().makeFloats({world->begin(), world->end()});
            case WorldTransformAnswer::kMatrix:
                break;
        }
        return AttributeModel::instance().makeDoubles({world->begin(), world->end()});
    }
    static void* delegateCallMethod(void* h, const char* name, void* argument) {
        return h != nullptr ? delegate(h)->callMethod(name, AttrRef::borrow(argument)).release()
                            : nullptr;
    }
    static void delegateComponent(void* h, const char* name, void** oh, void** p, const void** s) {
        if (!found(h, Lookup::kComponent)) return nothing(oh, p, s);
        ObjectTriple result;
        for (const auto& slot : delegate(h)->components_)
            if (slot->name == name)
                result = {slot.get(), slot->object->handle(), slot->object->suite()};
        result.writeTo(oh, p, s);
    }

    // ---- "ViewerDelegateComponentHost" 2 ----
    static void componentDelegate(void* component, void** oh, void** p, const void** s) {
        if (!found(component, Lookup::kViewerDelegate)) return nothing(oh, p, s);
        static_cast<ComponentSlot*>(component)->owner->triple().writeTo(oh, p, s);
    }

    // ---- "ManipulatorHost" 2 ----
    static void manipulatorHandle(void* h, std::uint32_t index, void** oh, void** p,
                                  const void** s) {
        ManipulatorHandle* handle =
            found(h, Lookup::kHandle) ? static_cast<Manipulator*>(h)->handle(index) : nullptr;
        (handle != nullptr ? handle->triple() : ObjectTriple()).writeTo(oh, p, s);
    }
    static std::uint32_t manipulatorHandleCount(void* h) {
        return h != nullptr ? static_cast<Manipulator*>(h)->numberOfHandles() : 0;
    }
};

namespace {

void provideViewerTables(PluginHost& host) {
    using T = ViewerTables;
    static SuiteTable layerHost("ViewportLayerHost");
    layerHost.set(0, &T::layerViewport).set(4, &T::layerAddPickedAttr).set(5, &T::layerPick);

    static SuiteTable viewportHost("ViewportHost");
    viewportHost.set(1, &T::viewportDelegate)
        .set(2, &T::viewportCamera)
        .set(16, &T::viewportWidth)
        .set(17, &T::viewportHeight)
        .set(19, &T::viewportSetDirty)
        .set(22, &T::viewportLayerByName)
        .set(23, &T::viewportLayerByIndex)
        .set(26, &T::viewportLayerCount)
        .set(29, &T::viewportViewMatrix)
        .set(30, &T::viewportProjection)
        .set(36, &T::viewportManipulator);

    static SuiteTable cameraHost("ViewportCameraHost");
    cameraHost.set(14, &T::cameraOrigin);

    static SuiteTable delegateHost("ViewerDelegateHost");
    delegateHost.set(1, &T::delegateAttributes)
        .set(3, &T::delegateWorldTransform)
        .set(19, &T::delegateCallMethod)
        .set(21, &T::delegateComponent);

    static SuiteTable componentHost("ViewerDelegateComponentHost");
    componentHost.set(0, &T::componentDelegate);

    static SuiteTable manipulatorHost("ManipulatorHost");
    manipulatorHost.set(13, &T::manipulatorHandle).set(16, &T::manipulatorHandleCount);

    static SuiteTable handleHost("ManipulatorHandleHost");  // fetched, never called

    host.provide("ViewportLayerHost", 2, layerHost);
    host.provide("ViewportHost", 3, viewportHost);
    host.provide("ViewportCameraHost", 2, cameraHost);
    host.provide("ViewerDelegateHost", 4, delegateHost);
    host.provide("ViewerDelegateComponentHost", 2, componentHost);
    host.provide("ManipulatorHost", 2, manipulatorHost);
    host.provide("ManipulatorHandleHost", 1, handleHost);
}

}  // namespace

HostRecord* viewerHostRecord() {
    static const bool provided = [] {
        provideViewerTables(PluginHost::instance());
        return true;
    }();
    (void)provided;
    return PluginHost::instance().record();
}

}  // namespace sorrel

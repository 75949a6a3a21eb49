#include "host/viewer/viewer_tables.h"

#include "host/core/attribute_model.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"

namespace sorrel {

// Every function takes the object's host handle first; for a layer or
// component that is the slot the host keeps it in.
struct ViewerTables {
    using Slot = Viewport::LayerSlot;
    using ComponentSlot = ViewerDelegate::ComponentSlot;

    static Viewport& viewport(void* h) { return *static_cast<Viewport*>(h); }
    static ViewerDelegate& delegate(void* h) { return *static_cast<ViewerDelegate*>(h); }

    // ---- "ViewportLayerHost" 2 ----
    static void layerViewport(void* layer, void** h, void** p, const void** s) {
        static_cast<Slot*>(layer)->viewport->triple().writeTo(h, p, s);
    }
    static std::uint64_t layerAddPickedAttr(void* layer, void* attribute) {
        return static_cast<Slot*>(layer)->viewport->addPickedAttr(AttrRef::borrow(attribute));
    }
    static void* layerPick(void* layer, std::int32_t x, std::int32_t y, std::int32_t width,
                           std::int32_t height, std::int32_t flag, float* depth) {
        const Slot& slot = *static_cast<Slot*>(layer);
        return slot.viewport->pick(slot.name, x, y, width, height, flag != 0, depth).release();
    }

    // ---- "ViewportHost" 3 ----
    static void viewportDelegate(void* h, void** oh, void** p, const void** s) {
        viewport(h).viewerDelegate().triple().writeTo(oh, p, s);
    }
    static void viewportCamera(void* h, void** oh, void** p, const void** s) {
        viewport(h).camera().triple().writeTo(oh, p, s);
    }
    static std::int32_t viewportWidth(void* h) { return viewport(h).width; }
    static std::int32_t viewportHeight(void* h) { return viewport(h).height; }
    static void viewportSetDirty(void* h, std::uint8_t) { viewport(h).setDirty(); }
    static void viewportLayerByName(void* h, const char* name, void** oh, void** p,
                                    const void** s) {
        ObjectTriple found;
        for (const auto& slot : viewport(h).layers_)
            if (slot->name == name) found = slot->triple();
        found.writeTo(oh, p, s);
    }
    static void viewportLayerByIndex(void* h, std::uint32_t index, void** oh, void** p,
                                     const void** s) {
        const auto& layers = viewport(h).layers_;
        (index < layers.size() ? layers[index]->triple() : ObjectTriple()).writeTo(oh, p, s);
    }
    static std::uint32_t viewportLayerCount(void* h) { return viewport(h).numberOfLayers(); }
    static const double* viewportViewMatrix(void* h) { return viewport(h).view.data(); }
    static const double* viewportProjection(void* h) { return viewport(h).projection.data(); }
    static void viewportManipulator(void* h, const char* name, void** oh, void** p,
                                    const void** s) {
        Manipulator* found = viewport(h).manipulator(name);
        (found != nullptr ? found->triple() : ObjectTriple()).writeTo(oh, p, s);
    }

    // ---- "ViewportCameraHost" 2 ----
    static void cameraOrigin(void* h, double* x, double* y, double* z) {
        const Camera& camera = *static_cast<Camera*>(h);
        *x = camera.origin[0];
        *y = camera.origin[1];
        *z = camera.origin[2];
    }

    // ---- "ViewerDelegateHost" 4 ----
    static void* delegateAttributes(void* h, const char* path, std::uint32_t) {
        return delegate(h).locationAttributes(path).release();
    }
    static void* delegateWorldTransform(void* h, const char* path, std::uint32_t) {
        const auto world = delegate(h).worldTransform(path);
        if (!world) return nullptr;
        return AttributeModel::instance().makeDoubles({world->begin(), world->end()});
    }
    static void* delegateCallMethod(void* h, const char* name, void* argument) {
        return delegate(h).callMethod(name, AttrRef::borrow(argument)).release();
    }
    static void delegateComponent(void* h, const char* name, void** oh, void** p, const void** s) {
        ObjectTriple found;
        for (const auto& slot : delegate(h).components_)
            if (slot->name == name)
                found = {slot.get(), slot->object->handle(), slot->object->suite()};
        found.writeTo(oh, p, s);
    }

    // ---- "ViewerDelegateComponentHost" 2 ----
    static void componentDelegate(void* component, void** oh, void** p, const void** s) {
        static_cast<ComponentSlot*>(component)->owner->triple().writeTo(oh, p, s);
    }

    // ---- "ManipulatorHost" 2 ----
    static void manipulatorHandle(void* h, std::uint32_t index, void** oh, void** p,
                                  const void** s) {
        ManipulatorHandle* handle = static_cast<Manipulator*>(h)->handle(index);
        (handle != nullptr ? handle->triple() : ObjectTriple()).writeTo(oh, p, s);
    }
    static std::uint32_t manipulatorHandleCount(void* h) {
        return static_cast<Manipulator*>(h)->numberOfHandles();
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

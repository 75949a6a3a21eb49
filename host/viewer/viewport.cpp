#include "host/viewer/viewport.h"

#include "host/core/suite_table.h"
#include "host/viewer/camera_matrices.h"
#include "host/viewer/viewer_delegate.h"

namespace sorrel {

namespace {

const SuiteTable& viewportSuite() {
    static const SuiteTable table("ViewportPlugin");
    return table;
}

}  // namespace

Viewport::Viewport(ViewerDelegate& delegate, std::int32_t width, std::int32_t height)
    : width(width), height(height), delegate_(delegate) {}

Viewport::~Viewport() { removeLayers(); }

void Viewport::lookAt(const double eye[3], const double target[3], double fovYDegrees,
                      double nearPlane, double farPlane) {
    const Vec3 from{eye[0], eye[1], eye[2]};
    view = lookAtMatrix(from, {target[0], target[1], target[2]});
    const double aspect = static_cast<double>(width) / static_cast<double>(height);
    projection = perspectiveMatrix(fovYDegrees, aspect, nearPlane, farPlane);
    for (int i = 0; i < 3; ++i) camera_.origin[i] = eye[i];
}

LayerObject& Viewport::addPluginLayer(const std::string& name, void* const* suite) {
    auto slot = std::make_unique<LayerSlot>();
    slot->viewport = this;
    slot->name = name;
    slot->plugin = std::make_unique<LayerObject>(suite, slot.get());
    layers_.push_back(std::move(slot));
    return *layers_.back()->plugin;
}

HostLayer& Viewport::addHostLayer(std::unique_ptr<HostLayer> layer) {
    auto slot = std::make_unique<LayerSlot>();
    slot->viewport = this;
    slot->name = layer->name();
    layer->attach(this);
    slot->host = std::move(layer);
    slot->record.object = slot->host.get();
    layers_.push_back(std::move(slot));
    return *layers_.back()->host;
}

LayerObject* Viewport::pluginLayer(const std::string& name) {
    for (const auto& slot : layers_)
        if (slot->name == name && slot->plugin) return slot->plugin.get();
    return nullptr;
}

HostLayer* Viewport::hostLayer(const std::string& name) {
    for (const auto& slot : layers_)
        if (slot->name == name && slot->host) return slot->host.get();
    return nullptr;
}

void Viewport::removeLayers() {
    while (!layers_.empty()) layers_.pop_back();
}

void Viewport::removePluginLayer(const std::string& name) {
    for (auto slot = layers_.begin(); slot != layers_.end(); ++slot) {
        if ((*slot)->name == name && (*slot)->plugin) {
            layers_.erase(slot);
            return;
        }
    }
}

void Viewport::forEachPluginLayer(const std::function<void(LayerObject&)>& visit) {
    for (const auto& slot : layers_)
        if (slot->plugin) visit(*slot->plugin);
}

void Viewport::addManipulator(std::unique_ptr<Manipulator> manipulator) {
    const std::string name = manipulator->name();
    manipulators_[name] = std::move(manipulator);
}

Manipulator* Viewport::manipulator(const std::string& name) {
    const auto found = manipulators_.find(name);
    return found != manipulators_.end() ? found->second.get() : nullptr;
}

std::uint64_t Viewport::addPickedAttr(const AttrRef& attribute) {
    const std::uint64_t id = nextPickId_++;
    picked_[id] = attribute;
    return id;
}

AttrRef Viewport::pick(const std::string& layerName, std::int32_t x, std::int32_t y, std::int32_t w,
                       std::int32_t h, bool flag, float* depth) const {
    return pickHandler_ ? pickHandler_(layerName, x, y, w, h, flag, depth) : AttrRef();
}

const AttrRef* Viewport::pickedAttr(std::uint64_t id) const {
    const auto found = picked_.find(id);
    return found != picked_.end() ? &found->second : nullptr;
}

ObjectTriple Viewport::triple() {
    record_.object = this;
    return {this, &record_, viewportSuite().data()};
}

ObjectTriple Viewport::LayerSlot::triple() const {
    if (plugin) return {const_cast<LayerSlot*>(this), plugin->handle(), plugin->suite()};
    return {const_cast<LayerSlot*>(this), const_cast<HostObjectRecord*>(&record),
            HostLayer::suite()};
}

}  // namespace sorrel

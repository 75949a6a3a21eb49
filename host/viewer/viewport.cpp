#include "host/viewer/viewport.h"

#include <cmath>

#include "host/core/suite_table.h"
#include "host/viewer/viewer_delegate.h"

namespace sorrel {

namespace {

const SuiteTable& viewportSuite() {
    static const SuiteTable table("ViewportPlugin");
    return table;
}

constexpr double kPi = 3.14159265358979323846;

}  // namespace

Viewport::Viewport(ViewerDelegate& delegate, std::int32_t width, std::int32_t height)
    : width(width), height(height), delegate_(delegate) {}

Viewport::~Viewport() { removeLayers(); }

void Viewport::lookAt(const double eye[3], const double target[3], double fovYDegrees,
                      double nearPlane, double farPlane) {
    double f[3] = {target[0] - eye[0], target[1] - eye[1], target[2] - eye[2]};
    const double fl = std::sqrt(f[0] * f[0] + f[1] * f[1] + f[2] * f[2]);
    for (double& v : f) v /= fl;
    // World up is +Y unless the view is vertical.
    double up[3] = {0, 1, 0};
    if (std::fabs(f[1]) > 0.999) up[1] = 0, up[2] = -1;
    double s[3] = {f[1] * up[2] - f[2] * up[1], f[2] * up[0] - f[0] * up[2],
                   f[0] * up[1] - f[1] * up[0]};
    const double sl = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
    for (double& v : s) v /= sl;
    const double u[3] = {s[1] * f[2] - s[2] * f[1], s[2] * f[0] - s[0] * f[2],
                         s[0] * f[1] - s[1] * f[0]};
    // Row-vector view matrix: columns are the camera axes (x = s, y = u, z = -f).
    view = {s[0], u[0], -f[0], 0, s[1], u[1], -f[1], 0, s[2], u[2], -f[2], 0, 0, 0, 0, 1};
    view[12] = -(s[0] * eye[0] + s[1] * eye[1] + s[2] * eye[2]);
    view[13] = -(u[0] * eye[0] + u[1] * eye[1] + u[2] * eye[2]);
    view[14] = f[0] * eye[0] + f[1] * eye[1] + f[2] * eye[2];

    const double aspect = static_cast<double>(width) / static_cast<double>(height);
    const double t = 1.0 / std::tan(fovYDegrees * kPi / 360.0);
    const double depthScale = (farPlane + nearPlane) / (nearPlane - farPlane);
    const double depthOffset = 2 * farPlane * nearPlane / (nearPlane - farPlane);
    // clang-format off
    projection = {t / aspect, 0, 0,           0,
                  0,          t, 0,           0,
                  0,          0, depthScale,  -1,
                  0,          0, depthOffset, 0};
    // clang-format on
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

#include "host/viewer/viewer_delegate.h"

#include "host/core/attribute_model.h"
#include "host/core/names.h"
#include "host/core/suite_table.h"

namespace sorrel {

namespace {
const SuiteTable& delegateSuite() {
    static const SuiteTable table("ViewerDelegatePlugin");
    return table;
}
}  // namespace

ViewerDelegate::ViewerDelegate() = default;
ViewerDelegate::~ViewerDelegate() { removeComponents(); }

ComponentObject& ViewerDelegate::addComponent(const std::string& name, void* const* suite) {
    auto slot = std::make_unique<ComponentSlot>();
    slot->name = name;
    slot->owner = this;
    slot->object = std::make_unique<ComponentObject>(suite, slot.get());
    slot->object->setup();
    components_.push_back(std::move(slot));
    return *components_.back()->object;
}

ComponentObject* ViewerDelegate::component(const std::string& name) {
    for (const auto& slot : components_)
        if (slot->name == name) return slot->object.get();
    return nullptr;
}

void ViewerDelegate::removeComponents() {
    while (!components_.empty()) {
        components_.back()->object->cleanup();
        components_.pop_back();
    }
}

void ViewerDelegate::removeComponent(const std::string& name) {
    for (auto slot = components_.begin(); slot != components_.end(); ++slot) {
        if ((*slot)->name == name) {
            (*slot)->object->cleanup();
            components_.erase(slot);
            return;
        }
    }
}

AttrRef ViewerDelegate::callMethod(const std::string& name, const AttrRef& argument) {
    methodCalls_.push_back(name);
    const auto found = methods_.find(name);
    return found != methods_.end() ? found->second(argument) : AttrRef();
}

void ViewerDelegate::sendEvent(const std::string& path, std::uint32_t flags) {
    const Location* location = scene_.find(path);
    const AttrRef attributes = location != nullptr ? location->attributes : AttrRef();
    const AttrRef transform = location != nullptr
                                  ? AttrRef(AttributeModel::instance().makeDoubles(
                                        {location->local.begin(), location->local.end()}))
                                  : AttrRef();
    if (excluded_.count(path) != 0) flags |= LocationFlags::kExcluded;
    for (const auto& slot : components_)
        slot->object->locationEvent(path, attributes, transform, flags);
}

void ViewerDelegate::sendLocation(const std::string& path, std::uint32_t extraFlags) {
    sendEvent(path, LocationFlags::kAttributesChanged | extraFlags);
}

void ViewerDelegate::sendTransformChange(const std::string& path, bool attributesChanged) {
    sendEvent(path, LocationFlags::kTransformChanged |
                        (attributesChanged ? LocationFlags::kAttributesChanged : 0));
}

void ViewerDelegate::sendStateChange(const std::string& path) {
    sendEvent(path, LocationFlags::kStateChanged);
}

void ViewerDelegate::sendRemoval(const std::string& path) {
    sendEvent(path, LocationFlags::kRemoved);
}

void ViewerDelegate::sendSelection(const std::vector<std::string>& paths) {
    for (const auto& slot : components_) slot->object->locationsSelected(paths);
}

void ViewerDelegate::putLocation(const std::string& path, AttrRef attributes, const Matrix& local) {
    scene_.set(path, std::move(attributes), local);
    sendLocation(path);
}

void ViewerDelegate::putLightRoots() {
    for (const char* path : {"/root", "/root/world", "/root/world/lgt"})
        putLocation(path, groupAttr({{names::kType, stringAttr(names::kGroupType)}}));
}

void ViewerDelegate::moveLocation(const std::string& path, const Matrix& local) {
    if (Location* location = scene_.find(path)) location->local = local;
    sendTransformChange(path);
}

void ViewerDelegate::removeLocation(const std::string& path) {
    for (const std::string& gone : scene_.subtree(path)) excluded_.erase(gone);
    scene_.remove(path);
    sendRemoval(path);
}

void ViewerDelegate::setExcluded(const std::string& path, bool excluded) {
    if (excluded)
        excluded_.insert(path);
    else
        excluded_.erase(path);
    sendStateChange(path);
}

void ViewerDelegate::sendUsdEvent(const vrt::Path& path, const vrt::Prim& prim, std::uint32_t flags,
                                  double time) {
    for (const auto& slot : components_) slot->object->usdLocationEvent(time, &path, &prim, flags);
}

void ViewerDelegate::sendUsdPrim(const vrt::Prim& prim, std::uint32_t flags, double time) {
    sendUsdEvent(prim.getPath(), prim, flags, time);
}

void ViewerDelegate::sendUsdRemoval(const vrt::Path& path) {
    sendUsdEvent(path, vrt::Prim(), UsdFlags::kPrimRemoved, /* time = */ 0.0);
}

void ViewerDelegate::sendUsdSelection(const std::vector<std::string>& paths) {
    for (const auto& slot : components_) slot->object->usdLocationsSelected(paths);
}

AttrRef ViewerDelegate::locationAttributes(const std::string& path) {
    ++transformQueries_;
    const Location* location = scene_.find(path);
    return location != nullptr ? location->attributes : AttrRef();
}

std::optional<Matrix> ViewerDelegate::worldTransform(const std::string& path) {
    ++transformQueries_;
    return scene_.worldTransform(path);
}

ObjectTriple ViewerDelegate::triple() {
    record_.object = this;
    return {this, &record_, delegateSuite().data()};
}

}  // namespace sorrel

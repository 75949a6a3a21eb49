#include "host/core/plugin_objects.h"

#include <cstring>

#include "host/core/option_id_generator.h"

namespace sorrel {

namespace {
std::uint64_t optionId(const std::string& name) { return OptionIdGenerator::instance().idOf(name); }

std::vector<const char*> pointersOf(const std::vector<std::string>& texts) {
    std::vector<const char*> pointers;
    for (const std::string& text : texts) pointers.push_back(text.c_str());
    return pointers;
}
}  // namespace

PluginObject::PluginObject(void* const* suite, void* hostHandle)
    : suite_(suite), handle_(entryAt<void* (*)(void*)>(suite, 0)(hostHandle)) {}

PluginObject::~PluginObject() { destroy(); }

void PluginObject::destroy() {
    if (handle_ == nullptr) return;
    entryAt<void (*)(void*)>(suite_, 1)(handle_);
    handle_ = nullptr;
}

// ---- layers ----

void LayerObject::setup() const { entryAt<void (*)(void*)>(suite_, 2)(handle_); }
void LayerObject::cleanup() const { entryAt<void (*)(void*)>(suite_, 3)(handle_); }
bool LayerObject::event(AttrRef event) const {
    return entryAt<std::int32_t (*)(void*, void*)>(suite_, 4)(handle_, event.release()) != 0;
}
void LayerObject::draw() const { entryAt<void (*)(void*)>(suite_, 5)(handle_); }
void LayerObject::resize(std::int32_t width, std::int32_t height) const {
    entryAt<void (*)(void*, std::int32_t, std::int32_t)>(suite_, 6)(handle_, width, height);
}
void LayerObject::stateChanged(std::uint8_t state) const {
    entryAt<void (*)(void*, std::uint8_t, void*)>(suite_, 7)(handle_, state, nullptr);
}
void LayerObject::setOption(std::uint64_t id, AttrRef value) const {
    entryAt<void (*)(void*, std::uint64_t, void*)>(suite_, 10)(handle_, id, value.release());
}
void LayerObject::setOption(const std::string& name, AttrRef value) const {
    setOption(optionId(name), std::move(value));
}
AttrRef LayerObject::getOption(std::uint64_t id) const {
    return AttrRef(
        static_cast<AttrHandle>(entryAt<void* (*)(void*, std::uint64_t)>(suite_, 11)(handle_, id)));
}
AttrRef LayerObject::getOption(const std::string& name) const { return getOption(optionId(name)); }
void LayerObject::pickerDraw(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                             const AttrRef& excluded) const {
    using Fn = void (*)(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, void*);
    entryAt<Fn>(suite_, 12)(handle_, x, y, w, h, excluded.get());
}
bool LayerObject::layerFlag() const {
    return entryAt<std::uint8_t (*)(void*)>(suite_, 13)(handle_) != 0;
}
bool LayerObject::pick(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h, bool flag,
                       AttrRef& out, float* depth) const {
    using Fn = std::int32_t (*)(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                std::int32_t, void**, float*);
    void* raw = out.get();
    if (entryAt<Fn>(suite_, 14)(handle_, x, y, w, h, flag ? 1 : 0, &raw, depth) == 0) return false;
    out = AttrRef(static_cast<AttrHandle>(raw));  // a new reference; the old one is ours to drop
    return true;
}

// ---- components ----

bool ComponentObject::locationEvent(const std::string& path, const AttrRef& attributes,
                                    const AttrRef& transform, std::uint32_t flags,
                                    std::uint8_t flag) const {
    const LocationEventRecord record{path.c_str(), attributes.get(), transform.get(), flags};
    using Fn = std::uint8_t (*)(void*, const LocationEventRecord*, std::uint8_t);
    return entryAt<Fn>(suite_, 2)(handle_, &record, flag) != 0;
}
void ComponentObject::locationsSelected(const std::vector<std::string>& paths) const {
    const std::vector<const char*> pointers = pointersOf(paths);
    entryAt<void (*)(void*, const char* const*, std::int64_t)>(suite_, 3)(
        handle_, pointers.data(), static_cast<std::int64_t>(pointers.size()));
}
void ComponentObject::usdLocationsSelected(const std::vector<std::string>& paths) const {
    const std::vector<const char*> pointers = pointersOf(paths);
    entryAt<void (*)(void*, const char* const*, std::int64_t)>(suite_, 13)(
        handle_, pointers.data(), static_cast<std::int64_t>(pointers.size()));
}
bool ComponentObject::usdLocationEvent(double time, const void* path, const void* prim,
                                       std::uint32_t flags, std::uint8_t flag) const {
    struct Record {
        double time;
        const void* path;
        const void* prim;
        std::uint32_t flags;
    } const record{time, path, prim, flags};
    using Fn = std::uint8_t (*)(void*, const Record*, std::uint8_t);
    return entryAt<Fn>(suite_, 12)(handle_, &record, flag) != 0;
}
void ComponentObject::setOption(std::uint64_t id, AttrRef value) const {
    entryAt<void (*)(void*, std::uint64_t, void*)>(suite_, 4)(handle_, id, value.release());
}
AttrRef ComponentObject::getOption(std::uint64_t id) const {
    return AttrRef(
        static_cast<AttrHandle>(entryAt<void* (*)(void*, std::uint64_t)>(suite_, 5)(handle_, id)));
}
void ComponentObject::setup() const { entryAt<void (*)(void*)>(suite_, 6)(handle_); }
void ComponentObject::cleanup() const { entryAt<void (*)(void*)>(suite_, 7)(handle_); }
bool ComponentObject::queryFlag() const {
    return entryAt<std::uint8_t (*)(void*)>(suite_, 8)(handle_) != 0;
}
AttrRef ComponentObject::attributeQueryA(const std::string& text) const {
    return AttrRef(static_cast<AttrHandle>(
        entryAt<void* (*)(void*, const char*)>(suite_, 9)(handle_, text.c_str())));
}
AttrRef ComponentObject::attributeQueryB(const std::string& text) const {
    return AttrRef(static_cast<AttrHandle>(
        entryAt<void* (*)(void*, const char*)>(suite_, 10)(handle_, text.c_str())));
}
std::uint64_t ComponentObject::marker() const {
    std::uint64_t word;
    std::memcpy(&word, &suite_[11], sizeof word);
    return word;
}

}  // namespace sorrel

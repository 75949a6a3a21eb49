#pragma once
// Objects of a loaded plugin as the host drives them: through their entry
// tables, by position, with the reference rules of each entry.

#include <cstdint>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"

namespace sorrel {

/// Reads a function pointer from a table position.
template <typename Fn>
Fn entryAt(void* const* suite, std::size_t position) {
    return reinterpret_cast<Fn>(suite[position]);
}

/// A plugin object: its entry table and the handle that `create` returned.
class PluginObject {
public:
    PluginObject(void* const* suite, void* hostHandle);
    virtual ~PluginObject();
    PluginObject(const PluginObject&) = delete;
    PluginObject& operator=(const PluginObject&) = delete;

    void* const* suite() const { return suite_; }
    void* handle() const { return handle_; }
    /// Calls `destroy` (position 1) once; later calls do nothing.
    void destroy();

protected:
    void* const* suite_;
    void* handle_;
};

/// A viewport layer of the plugin, by the fifteen positions of its table.
class LayerObject : public PluginObject {
public:
    using PluginObject::PluginObject;

    void setup() const;
    void cleanup() const;
    /// Gives the event's reference over; true when the layer used it.
    bool event(AttrRef event) const;
    void draw() const;
    void resize(std::int32_t width, std::int32_t height) const;
    void stateChanged(std::uint8_t state) const;
    /// Gives the value's reference over.
    void setOption(std::uint64_t id, AttrRef value) const;
    void setOption(const std::string& name, AttrRef value) const;
    AttrRef getOption(std::uint64_t id) const;
    AttrRef getOption(const std::string& name) const;
    /// Lends the picking group for the call.
    void pickerDraw(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                    const AttrRef& excluded) const;
    bool layerFlag() const;
    /// The layer's answer, or false leaving `out` untouched.
    bool pick(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h, bool flag,
              AttrRef& out, float* depth) const;
};

/// The host's record of one location event, laid out as the contract says.
struct LocationEventRecord {
    const char* location;
    void* attributes;
    void* transform;
    std::uint32_t flags;
};

/// A viewer delegate component of the plugin, by the fourteen positions of its table.
class ComponentObject : public PluginObject {
public:
    using PluginObject::PluginObject;

    /// The attributes and transform are lent for the call.
    bool locationEvent(const std::string& path, const AttrRef& attributes, const AttrRef& transform,
                       std::uint32_t flags, std::uint8_t flag = 1) const;
    void locationsSelected(const std::vector<std::string>& paths) const;
    void usdLocationsSelected(const std::vector<std::string>& paths) const;
    bool usdLocationEvent(double time, const void* path, const void* prim, std::uint32_t flags,
                          std::uint8_t flag = 1) const;
    void setOption(std::uint64_t id, AttrRef value) const;
    AttrRef getOption(std::uint64_t id) const;
    void setup() const;
    void cleanup() const;
    bool queryFlag() const;
    AttrRef attributeQueryA(const std::string& text) const;
    AttrRef attributeQueryB(const std::string& text) const;
    /// Position 11 of the table, read as the number it holds.
    std::uint64_t marker() const;
};

}  // namespace sorrel

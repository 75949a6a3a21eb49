#pragma once
// A viewport layer implemented by the host itself ("SelectionLayer",
// "SnappingLayer", ...). The plugin reaches it through an entry table of the
// same fifteen positions as its own layers; the host answers options there.

#include <cstdint>
#include <string>

#include "host/core/attribute_ref.h"
#include "host/core/host_object.h"

namespace sorrel {

class Viewport;

class HostLayer : public HostObject {
public:
    explicit HostLayer(std::string name) : name_(std::move(name)) {}
    const std::string& name() const { return name_; }

    /// The value's reference is the layer's to keep or drop.
    virtual void setOption(std::uint64_t id, AttrRef value) = 0;
    /// A new reference for the caller, or null.
    virtual AttrRef getOption(std::uint64_t id) = 0;

    /// The viewport the layer was added to.
    Viewport* viewport() const { return viewport_; }
    void attach(Viewport* viewport) { viewport_ = viewport; }

    /// The entry table through which other plugins reach host layers.
    static void* const* suite();

private:
    std::string name_;
    Viewport* viewport_ = nullptr;
};

}  // namespace sorrel

#pragma once
// A manipulator of a viewport and its handles, implemented by the host. The
// plugin sets options on the handles through their entry table.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/core/host_object.h"

namespace sorrel {

class ManipulatorHandle : public HostObject {
public:
    /// The value's reference is the handle's.
    virtual void setOption(std::uint64_t id, AttrRef value) = 0;

    virtual ObjectTriple triple();
    /// The handle's entry table (position 5 takes options).
    static void* const* suite();

private:
    HostObjectRecord record_;
};

class Manipulator : public HostObject {
public:
    explicit Manipulator(std::string name) : name_(std::move(name)) {}
    const std::string& name() const { return name_; }

    virtual std::uint32_t numberOfHandles() const = 0;
    /// Null when there is no such handle.
    virtual ManipulatorHandle* handle(std::uint32_t index) = 0;

    ObjectTriple triple();

private:
    std::string name_;
    HostObjectRecord record_;
};

}  // namespace sorrel

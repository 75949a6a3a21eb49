#pragma once
// Objects the host implements itself (its own layers, manipulators, cameras)
// must look like plugin objects: the first field of their plugin handle points
// to a polymorphic C++ object, so that a dynamic_cast that the plugin applies
// to any object fails cleanly instead of being undefined.

namespace sorrel {

class HostObject {
public:
    virtual ~HostObject() = default;
};

/// The plugin handle of a host-implemented object: the object's address first.
struct HostObjectRecord {
    HostObject* object = nullptr;
    void* reserved = nullptr;
};

/// What the host reports for one object through "three outs".
struct ObjectTriple {
    void* hostHandle = nullptr;
    void* pluginHandle = nullptr;
    const void* suite = nullptr;

    void writeTo(void** hostHandleOut, void** pluginHandleOut, const void** suiteOut) const {
        *hostHandleOut = hostHandle;
        *pluginHandleOut = pluginHandle;
        *suiteOut = suite;
    }
};

}  // namespace sorrel

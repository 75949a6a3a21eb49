#pragma once
// The value by which the host refers to a created plugin object.

#include <memory>
#include <utility>

namespace Tessera::Sorrel::ViewerAPI {

/// One owning reference to a plugin object: the object's address, then its
/// shared-ownership block. Code in this process reads the address from the
/// record's first field, whichever plugin made the record.
struct PluginObjectHandle {
    std::shared_ptr<void> object;
};
static_assert(sizeof(PluginObjectHandle) == 2 * sizeof(void*));

/// The object's address, read from the first field of the record.
inline void* pluginInstanceOf(const PluginObjectHandle* handle) {
    return handle != nullptr ? *reinterpret_cast<void* const*>(handle) : nullptr;
}

/// The shared destroy entry of every class: gives up the strong reference.
void destroyPluginObject(PluginObjectHandle* handle);

/// Wraps a new object whose address is taken as its `Base` subobject.
template <typename Base, typename Concrete>
PluginObjectHandle* makePluginObjectHandle(std::shared_ptr<Concrete> object) {
    std::shared_ptr<Base> base = std::move(object);
    return new PluginObjectHandle{std::shared_ptr<void>(std::move(base))};
}

/// The object behind a handle, as the base it was created with.
template <typename Base>
Base& pluginObject(PluginObjectHandle* handle) {
    return *static_cast<Base*>(handle->object.get());
}

}  // namespace Tessera::Sorrel::ViewerAPI

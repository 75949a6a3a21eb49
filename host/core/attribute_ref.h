#pragma once
// A reference to an attribute of the host's model that the host side owns,
// released at scope end, and short makers for the host's scenes and tests.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_node.h"

namespace sorrel {

class AttrRef {
public:
    AttrRef() = default;
    /// Takes over a reference the caller owns.
    explicit AttrRef(AttrHandle handle) : handle_(handle) {}
    /// A reference of its own to a handle that the caller only lends.
    static AttrRef borrow(void* handle);
    AttrRef(const AttrRef& other);
    AttrRef(AttrRef&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    AttrRef& operator=(AttrRef other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~AttrRef();

    AttrHandle get() const { return handle_; }
    /// Gives the reference away (to an entry that consumes it).
    AttrHandle release() { return std::exchange(handle_, nullptr); }
    explicit operator bool() const { return handle_ != nullptr; }
    /// A child by dotted path, or a null reference.
    AttrRef child(const std::string& path) const;
    int type() const;
    std::int32_t intValue(std::size_t index = 0) const;
    float floatValue(std::size_t index = 0) const;
    double doubleValue(std::size_t index = 0) const;
    std::string stringValue(std::size_t index = 0) const;
    std::size_t valueCount() const;
    /// Readable text of the attribute, for test failures and the demo.
    std::string describe() const;

private:
    AttrHandle handle_ = nullptr;
};

AttrRef intAttr(std::int32_t value);
AttrRef floatAttr(float value);
AttrRef floatsAttr(std::vector<float> values);
AttrRef doubleAttr(double value);
AttrRef doublesAttr(std::vector<double> values);
AttrRef stringAttr(const std::string& text);
AttrRef groupAttr(std::vector<std::pair<std::string, AttrRef>> children);
/// A copy of `group` in which the child at the dotted `path` is `value`; groups
/// on the way that are missing, or are no groups, are made anew. The other
/// children are shared with `group`, which stays as it is.
AttrRef withChild(const AttrRef& group, const std::string& path, AttrRef value);

}  // namespace sorrel

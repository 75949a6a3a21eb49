#pragma once
// Reference-counted attribute values of the host, seen through typed views.
// A view of the wrong type is the null view, which every reader treats as
// "missing": wrong types never raise errors.
//
// What every read of an attribute goes through (references, types, hashes,
// children by name, single values) is defined inline below the classes: a
// location event makes some thirty such calls, and each is little more than
// the host call itself.

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/abi/boundary_types.h"
#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The time at which values that the plugin treats as still are read: the
/// nearest sample to it stands for the whole attribute.
inline constexpr float kTimeZero = 0.0f;
/// The value index that single-value reads ask for.
inline constexpr std::int64_t kFirstValue = 0;

/// Attribute type codes as the host's getType answers them.
enum AttributeType : int {
    kIntType = 1,
    kFloatType = 2,
    kDoubleType = 3,
    kStringType = 4,
    kGroupType = 5,
};

/// A content hash of two 64-bit words; (0, 0) stands for "no hash".
struct AttributeHash {
    std::uint64_t words[2] = {0, 0};

    bool isNull() const { return words[0] == 0 && words[1] == 0; }
    friend bool operator==(const AttributeHash& a, const AttributeHash& b) {
        return a.words[0] == b.words[0] && a.words[1] == b.words[1];
    }
    friend bool operator!=(const AttributeHash& a, const AttributeHash& b) { return !(a == b); }
};

/// An attribute of any type, holding one reference (or none when null).
class Attribute {
public:
    Attribute() = default;
    /// Takes over a reference that the caller owns.
    static Attribute adopt(AttributeHandle handle) { return Attribute(handle); }
    /// Makes a reference of its own to a borrowed handle.
    static Attribute share(AttributeHandle handle);

    Attribute(const Attribute& other);
    Attribute(Attribute&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
    Attribute& operator=(const Attribute& other);
    Attribute& operator=(Attribute&& other) noexcept;
    ~Attribute();

    bool isValid() const { return handle_ != nullptr; }
    explicit operator bool() const { return isValid(); }
    AttributeHandle handle() const { return handle_; }
    /// The address readers hand to the host's "nearest value" calls.
    const AttributeHandle* handleAddress() const { return &handle_; }
    /// Gives the reference away to the caller; the view becomes null.
    AttributeHandle release();
    /// The type code, or 0 for the null attribute.
    int type() const;
    /// The content hash, (0, 0) for the null attribute.
    AttributeHash hash() const;

protected:
    explicit Attribute(AttributeHandle handle) : handle_(handle) {}
    AttributeHandle handle_ = nullptr;
};

/// A view that holds only attributes of one type code.
template <int TypeCode>
class TypedAttribute : public Attribute {
public:
    static constexpr int kTypeCode = TypeCode;
    TypedAttribute() = default;
    /// Takes the source's reference if it is of this type; otherwise the view is
    /// null and the source keeps its reference.
    explicit TypedAttribute(Attribute&& source) {
        if (source.type() == TypeCode) handle_ = source.release();
    }
    /// Shares the source's reference if it is of this type.
    explicit TypedAttribute(const Attribute& source)
        : TypedAttribute(source.type() == TypeCode ? Attribute(source) : Attribute()) {}
};

class IntAttribute : public TypedAttribute<kIntType> {
public:
    using TypedAttribute::TypedAttribute;
    static IntAttribute create(std::int32_t value);
    /// The nearest value at time 0, or `fallback` when there is none.
    std::int32_t getValue(std::int32_t fallback = 0) const;
};

class FloatAttribute : public TypedAttribute<kFloatType> {
public:
    using TypedAttribute::TypedAttribute;
    /// The first value of the sample nearest time 0, or `fallback`.
    float getValue(float fallback = 0.0f) const;
};

class DoubleAttribute : public TypedAttribute<kDoubleType> {
public:
    using TypedAttribute::TypedAttribute;
    static DoubleAttribute create(double value);
    /// One sample at time 0.0 holding one tuple of three values.
    static DoubleAttribute createTriple(const double values[3]);
    double getValue(double fallback = 0.0) const;
};

class StringAttribute : public TypedAttribute<kStringType> {
public:
    using TypedAttribute::TypedAttribute;
    static StringAttribute create(const char* text);
    std::string getValue(const std::string& fallback = {}) const;
};

class GroupAttribute : public TypedAttribute<kGroupType> {
public:
    using TypedAttribute::TypedAttribute;
    /// The empty group, which is not the null attribute.
    static GroupAttribute createEmpty();

    std::int64_t getNumberOfChildren() const;
    std::string getChildName(std::int64_t index) const;
    Attribute getChildByIndex(std::int64_t index) const;
    /// A child by name; dots walk through nested groups. Null when absent.
    Attribute getChildByName(std::string_view name) const;
    /// A child as a typed view: null when missing or of another type.
    template <typename View>
    View getChild(std::string_view name) const {
        return View(getChildByName(name));
    }
};

/// Hash of a text as the host hashes a string attribute of it.
AttributeHash hashOfText(const char* text);

/// The `data` child of an event group; null when absent or no group.
GroupAttribute getEventData(const GroupAttribute& event);
/// The hash of the event's `type` child; (0, 0) when absent or no string.
AttributeHash getEventTypeHash(const GroupAttribute& event);

// ---- the calls every read goes through ----

inline Attribute Attribute::share(AttributeHandle handle) {
    if (handle != nullptr) attributeHost().retainAttr(handle);
    return Attribute(handle);
}

inline Attribute::Attribute(const Attribute& other) : handle_(other.handle_) {
    if (handle_ != nullptr) attributeHost().retainAttr(handle_);
}

inline Attribute& Attribute::operator=(const Attribute& other) {
    // The new reference is taken before the old one goes.
    if (this != &other) *this = Attribute(other);
    return *this;
}

inline Attribute& Attribute::operator=(Attribute&& other) noexcept {
    if (this != &other) {
        if (handle_ != nullptr) attributeHost().releaseAttr(handle_);
        handle_ = other.handle_;
        other.handle_ = nullptr;
    }
    return *this;
}

inline Attribute::~Attribute() {
    if (handle_ != nullptr) attributeHost().releaseAttr(handle_);
}

inline AttributeHandle Attribute::release() {
    const AttributeHandle handle = handle_;
    handle_ = nullptr;
    return handle;
}

inline int Attribute::type() const {
    return handle_ != nullptr ? attributeHost().getType(handle_) : 0;
}

inline AttributeHash Attribute::hash() const {
    AttributeHash hash;
    if (handle_ != nullptr) attributeHost().getHash(&hash, handle_);
    return hash;
}

inline std::int32_t IntAttribute::getValue(std::int32_t fallback) const {
    std::int32_t value = fallback;
    return attributeHost().getNearestInt(handleAddress(), kTimeZero, kFirstValue, &value)
               ? value
               : fallback;
}

inline double DoubleAttribute::getValue(double fallback) const {
    double value = fallback;
    return attributeHost().getNearestDouble(handleAddress(), kTimeZero, kFirstValue, &value)
               ? value
               : fallback;
}

inline StringAttribute StringAttribute::create(const char* text) {
    return StringAttribute(Attribute::adopt(attributeHost().createString(text)));
}

inline Attribute GroupAttribute::getChildByName(std::string_view name) const {
    if (!isValid()) return {};
    return Attribute::adopt(attributeHost().getChildByName(handle_, name.data(),
                                                           static_cast<std::int32_t>(name.size())));
}

}  // namespace Tessera::Sorrel::ViewerAPI

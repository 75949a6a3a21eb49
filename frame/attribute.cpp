#include "frame/attribute.h"

#include "frame/host_suite_registry.h"
#include "frame/sample_accessor.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {
constexpr std::int64_t kFirstValue = 0;
constexpr std::uint8_t kEmptyGroupFlag = 1;
}  // namespace

Attribute Attribute::share(AttributeHandle handle) {
    if (handle != nullptr) attributeHost().retainAttr(handle);
    return Attribute(handle);
}

Attribute::Attribute(const Attribute& other) : handle_(other.handle_) {
    if (handle_ != nullptr) attributeHost().retainAttr(handle_);
}

Attribute& Attribute::operator=(const Attribute& other) {
    if (this != &other) *this = Attribute(other);
    return *this;
}

Attribute& Attribute::operator=(Attribute&& other) noexcept {
    if (this != &other) {
        if (handle_ != nullptr) attributeHost().releaseAttr(handle_);
        handle_ = other.handle_;
        other.handle_ = nullptr;
    }
    return *this;
}

Attribute::~Attribute() {
    if (handle_ != nullptr) attributeHost().releaseAttr(handle_);
}

AttributeHandle Attribute::release() {
    AttributeHandle handle = handle_;
    handle_ = nullptr;
    return handle;
}

int Attribute::type() const { return handle_ != nullptr ? attributeHost().getType(handle_) : 0; }

AttributeHash Attribute::hash() const {
    AttributeHash hash;
    if (handle_ != nullptr) attributeHost().getHash(&hash, handle_);
    return hash;
}

IntAttribute IntAttribute::create(std::int32_t value) {
    return IntAttribute(Attribute::adopt(attributeHost().createInt(value)));
}

std::int32_t IntAttribute::getValue(std::int32_t fallback) const {
    std::int32_t value = fallback;
    return attributeHost().getNearestInt(handleAddress(), kTimeZero, kFirstValue, &value)
               ? value
               : fallback;
}

float FloatAttribute::getValue(float fallback) const {
    if (!isValid()) return fallback;
    const SampleAccessor<float> samples(*this, kTimeZero);
    return samples.empty() || samples.size() < 1 ? fallback : samples[0];
}

DoubleAttribute DoubleAttribute::create(double value) {
    return DoubleAttribute(Attribute::adopt(attributeHost().createDouble(value)));
}

DoubleAttribute DoubleAttribute::createTriple(const double values[3]) {
    const float times[1] = {kTimeZero};
    const double* const samples[1] = {values};
    return DoubleAttribute(Attribute::adopt(attributeHost().createDoubleSamples(
        times, /* timeCount = */ 1, samples, /* valueCount = */ 3, /* tupleSize = */ 3, nullptr,
        nullptr)));
}

double DoubleAttribute::getValue(double fallback) const {
    double value = fallback;
    return attributeHost().getNearestDouble(handleAddress(), kTimeZero, kFirstValue, &value)
               ? value
               : fallback;
}

StringAttribute StringAttribute::create(const char* text) {
    return StringAttribute(Attribute::adopt(attributeHost().createString(text)));
}

std::string StringAttribute::getValue(const std::string& fallback) const {
    const char* text = nullptr;
    if (!attributeHost().getNearestString(handleAddress(), kTimeZero, kFirstValue, &text) ||
        text == nullptr)
        return fallback;
    return text;
}

GroupAttribute GroupAttribute::createEmpty() {
    return GroupAttribute(
        Attribute::adopt(attributeHost().createGroup(nullptr, nullptr, 0, kEmptyGroupFlag)));
}

std::int64_t GroupAttribute::getNumberOfChildren() const {
    return isValid() ? attributeHost().getNumberOfChildren(handle_) : 0;
}

std::string GroupAttribute::getChildName(std::int64_t index) const {
    if (!isValid()) return {};
    std::int32_t length = 0;
    const char* name = attributeHost().getChildNameByIndex(handle_, index, &length);
    if (name == nullptr || length < 1) return {};
    return std::string(name, static_cast<std::size_t>(length));
}

Attribute GroupAttribute::getChildByIndex(std::int64_t index) const {
    if (!isValid()) return {};
    return Attribute::adopt(attributeHost().getChildByIndex(handle_, index));
}

Attribute GroupAttribute::getChildByName(std::string_view name) const {
    if (!isValid()) return {};
    return Attribute::adopt(attributeHost().getChildByName(handle_, name.data(),
                                                           static_cast<std::int32_t>(name.size())));
}

AttributeHash hashOfText(const char* text) {
    const Attribute string = Attribute::adopt(attributeHost().createString(text));
    return string.hash();
}

GroupAttribute getEventData(const GroupAttribute& event) {
    return event.getChild<GroupAttribute>("data");
}

AttributeHash getEventTypeHash(const GroupAttribute& event) {
    return event.getChild<StringAttribute>("type").hash();
}

}  // namespace Tessera::Sorrel::ViewerAPI

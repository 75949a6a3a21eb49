#include "frame/attribute.h"

#include "frame/frame_names.h"
#include "frame/sample_accessor.h"

using namespace Tessera::Sorrel::Names;

namespace Tessera::Sorrel::ViewerAPI {

namespace {
constexpr std::uint8_t kEmptyGroupFlag = 1;
}  // namespace

IntAttribute IntAttribute::create(std::int32_t value) {
    return IntAttribute(Attribute::adopt(attributeHost().createInt(value)));
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

AttributeHash hashOfText(const char* text) {
    const Attribute string = Attribute::adopt(attributeHost().createString(text));
    return string.hash();
}

GroupAttribute getEventData(const GroupAttribute& event) {
    return event.getChild<GroupAttribute>(kEventDataAttribute);
}

AttributeHash getEventTypeHash(const GroupAttribute& event) {
    return event.getChild<StringAttribute>(kTypeAttribute).hash();
}

}  // namespace Tessera::Sorrel::ViewerAPI

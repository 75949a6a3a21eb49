#include "vrt/prim.h"

namespace vrt {

unsigned Attribute::getValue(Value& value, double time) const {
    if (samples_ == nullptr || samples_->empty()) return 0;
    auto after = samples_->upper_bound(time);
    value = after == samples_->begin() ? after->second : std::prev(after)->second;
    return 1;
}

bool Prim::hasApi(const Token& schema) const {
    return data_ != nullptr && data_->appliedApis.count(schema.string()) != 0;
}

Attribute Prim::getAttr(const Token& name) const {
    if (data_ == nullptr) return Attribute();
    const auto found = data_->attributes.find(name.string());
    return found != data_->attributes.end() ? Attribute(&found->second) : Attribute();
}

void Prim::setAttr(const Token& name, Value value, double time) {
    data_->attributes[name.string()][time] = std::move(value);
}

}  // namespace vrt

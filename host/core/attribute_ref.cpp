#include "host/core/attribute_ref.h"

#include "host/core/attribute_model.h"

namespace sorrel {

namespace {
AttributeModel& model() { return AttributeModel::instance(); }
}  // namespace

AttrRef::AttrRef(const AttrRef& other) : handle_(other.handle_) {
    if (handle_ != nullptr) model().retain(handle_);
}
AttrRef AttrRef::borrow(void* handle) {
    auto* node = static_cast<AttrHandle>(handle);
    if (node != nullptr) model().retain(node);
    return AttrRef(node);
}
AttrRef::~AttrRef() {
    if (handle_ != nullptr) model().release(handle_);
}
AttrRef AttrRef::child(const std::string& path) const {
    return handle_ != nullptr ? AttrRef(model().childByPath(handle_, path)) : AttrRef();
}
int AttrRef::type() const { return handle_ != nullptr ? model().read(handle_).type : 0; }
std::int32_t AttrRef::intValue(std::size_t i) const {
    return model().read(handle_).ints.at(0).at(i);
}
float AttrRef::floatValue(std::size_t i) const { return model().read(handle_).floats.at(0).at(i); }
double AttrRef::doubleValue(std::size_t i) const {
    return model().read(handle_).doubles.at(0).at(i);
}
std::string AttrRef::stringValue(std::size_t i) const {
    return model().read(handle_).strings.at(0).at(i);
}
std::size_t AttrRef::valueCount() const {
    return handle_ != nullptr ? model().read(handle_).valuesPerSample() : 0;
}
std::string AttrRef::describe() const { return model().describe(handle_); }

AttrRef intAttr(std::int32_t v) { return AttrRef(model().makeInt(v)); }
AttrRef floatAttr(float v) { return AttrRef(model().makeFloat(v)); }
AttrRef floatsAttr(std::vector<float> v) { return AttrRef(model().makeFloats(std::move(v))); }
AttrRef doubleAttr(double v) { return AttrRef(model().makeDouble(v)); }
AttrRef doublesAttr(std::vector<double> v) { return AttrRef(model().makeDoubles(std::move(v))); }
AttrRef stringAttr(const std::string& text) { return AttrRef(model().makeString(text)); }
AttrRef groupAttr(std::vector<std::pair<std::string, AttrRef>> children) {
    std::vector<std::pair<std::string, AttrHandle>> handles;
    for (auto& [name, child] : children) handles.emplace_back(name, child.release());
    return AttrRef(model().makeGroup(std::move(handles)));
}

AttrRef withChild(const AttrRef& group, const std::string& path, AttrRef value) {
    const std::size_t dot = path.find('.');
    const std::string name = path.substr(0, dot);
    if (dot != std::string::npos)
        value = withChild(group.child(name), path.substr(dot + 1), std::move(value));

    std::vector<std::pair<std::string, AttrRef>> children;
    bool replaced = false;
    if (group.type() == kGroup) {
        for (const auto& [childName, child] : model().read(group.get()).children) {
            const bool match = childName == name;
            children.emplace_back(childName, match ? std::move(value) : AttrRef::borrow(child));
            replaced = replaced || match;
        }
    }
    if (!replaced) children.emplace_back(name, std::move(value));
    return groupAttr(std::move(children));
}

}  // namespace sorrel

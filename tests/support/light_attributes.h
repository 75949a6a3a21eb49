#pragma once
// Location attribute groups written with dotted names, as lights and other
// locations of a host scene carry them.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_model.h"
#include "host/core/attribute_ref.h"
#include "host/core/names.h"

namespace testing_support {

using AttributeEntries = std::vector<std::pair<std::string, sorrel::AttrRef>>;

/// A group in which "a.b" is the child "b" of the child group "a"; children keep
/// the order in which their first name appears.
inline sorrel::AttrRef dottedGroup(const AttributeEntries& entries) {
    std::vector<std::string> order;
    std::map<std::string, sorrel::AttrRef> leaves;
    std::map<std::string, AttributeEntries> below;
    for (const auto& [name, value] : entries) {
        const std::size_t dot = name.find('.');
        const std::string head = name.substr(0, dot);
        if (leaves.count(head) == 0 && below.count(head) == 0) order.push_back(head);
        if (dot == std::string::npos)
            leaves[head] = value;
        else
            below[head].emplace_back(name.substr(dot + 1), value);
    }
    std::vector<std::pair<std::string, sorrel::AttrRef>> children;
    for (const std::string& head : order)
        children.emplace_back(head,
                              leaves.count(head) != 0 ? leaves[head] : dottedGroup(below[head]));
    return sorrel::groupAttr(std::move(children));
}

/// A light with its centre of interest `distance` ahead, and whatever else is given.
inline sorrel::AttrRef lightAttributes(double distance, AttributeEntries extra = {}) {
    extra.emplace_back("type", sorrel::stringAttr("light"));
    extra.emplace_back(sorrel::names::kGeometryCenterOfInterest, sorrel::doubleAttr(distance));
    return dottedGroup(extra);
}

/// A list of strings, as the option of excluded locations takes it.
inline sorrel::AttrRef strings(std::vector<std::string> texts) {
    return sorrel::AttrRef(sorrel::AttributeModel::instance().makeStrings(std::move(texts)));
}

/// A location that is no light.
inline sorrel::AttrRef groupAttributes() {
    return dottedGroup({{"type", sorrel::stringAttr("group")}});
}

}  // namespace testing_support

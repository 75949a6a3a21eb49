#pragma once
// Picking results: pick identifiers mapped to the attributes they stand for.

#include <cstdint>
#include <map>

#include "frame/attribute.h"

namespace Tessera::Sorrel::ViewerAPI {

/// Ascending by identifier, one entry each. As an attribute it is a group whose
/// child names are the identifiers in decimal.
class PickedAttrsMap : public std::map<std::uint64_t, Attribute> {
public:
    /// Refills from a group that the caller gives over (null gives an empty map);
    /// a repeated identifier keeps the later child.
    void fill(GroupAttribute&& group);
    /// The group image; an empty map gives the null attribute, not an empty group.
    GroupAttribute toGroup() const;
};

}  // namespace Tessera::Sorrel::ViewerAPI

#include "apps/scene/light_kind.h"

#include <iterator>

namespace viewer {

namespace {

struct NamedKind {
    LightKind kind;
    const char* name;
};
constexpr NamedKind kKinds[] = {{LightKind::Spot, "spot"},
                                {LightKind::Point, "point"},
                                {LightKind::Directional, "directional"},
                                {LightKind::Area, "area"}};

}  // namespace

const char* lightKindName(LightKind kind) {
    for (const NamedKind& known : kKinds)
        if (known.kind == kind) return known.name;
    return kKinds[0].name;
}

std::optional<LightKind> lightKindNamed(const std::string& name) {
    for (const NamedKind& known : kKinds)
        if (name == known.name) return known.kind;
    return std::nullopt;
}

}  // namespace viewer

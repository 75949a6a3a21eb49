#include "host/siblings/snapping_layer.h"

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/option_id_generator.h"
#include "host/viewer/ray_cast.h"
#include "host/viewer/vector_attributes.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"

namespace sorrel {

namespace {

std::uint64_t optionId(const char* name) { return OptionIdGenerator::instance().idOf(name); }

/// The point that a strategy snaps to; the normal is always the hit's.
Vec3 snappedPoint(const SceneHit& hit, const std::string& strategy) {
    if (strategy == "Face" || strategy == "FaceNormal") return hit.hit.faceCentre;
    if (strategy == "ObjectCentre") return hit.boundsCentre;
    return hit.hit.point;
}

}  // namespace

void SnappingLayer::setOption(std::uint64_t id, AttrRef value) {
    static const std::uint64_t prepareId = optionId(names::kPreparePickOnDemand);
    if (id != prepareId) return;
    const auto x = readInt(value.child(names::kPickX));
    const auto y = readInt(value.child(names::kPickY));
    request_.valid = x && y;
    request_.x = x.value_or(0);
    request_.y = y.value_or(0);
    request_.strategy = readString(value.child(names::kPickStrategy)).value_or("");
}

AttrRef SnappingLayer::getOption(std::uint64_t id) {
    static const std::uint64_t pickId = optionId(names::kPickOnDemand);
    if (id != pickId || viewport() == nullptr) return AttrRef();
    if (!request_.valid) return AttrRef();
    const auto ray = rayThroughPixel(*viewport(), request_.x, request_.y);
    if (!ray) return AttrRef();
    const auto hit = castRay(viewport()->viewerDelegate().scene(), *ray);
    if (!hit) return AttrRef();
    lastAnswer_ = Answer{snappedPoint(*hit, request_.strategy), hit->hit.normal};
    return groupAttr(
        {{"point", floatTriple(lastAnswer_->point)}, {"normal", floatTriple(lastAnswer_->normal)}});
}

}  // namespace sorrel

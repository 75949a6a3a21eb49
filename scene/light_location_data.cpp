#include "scene/light_location_data.h"

#include <string_view>

#include "frame/frame_names.h"
#include "frame/group_builder.h"
#include "frame/sample_accessor.h"
#include "scene/scene_names.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr std::int32_t kNotHidden = 0;
constexpr std::int32_t kPickableByDefault = 1;
constexpr double kNoDistance = 0.0;
constexpr std::int64_t kColorChannels = 3;
constexpr std::int64_t kColorChannelsWithAlpha = 4;
/// A light at rest looks down its negative local z axis.
constexpr Vec3d kRestLook{0.0, 0.0, -1.0};

/// The hash of a light's location type, made once per process.
std::uint64_t lightTypeHash() {
    static const std::uint64_t hash = hashOfText(kLightLocationType).words[0];
    return hash;
}

// The readers below are forced inline: each runs for every new location,
// several of them more than once, and a call of its own would cost about as
// much as the two or three host calls it makes.

/// The first value of an integer attribute at time 0.0; only integers count.
[[gnu::always_inline]] inline std::int32_t intOr(const GroupAttribute& attributes,
                                                 std::string_view name, std::int32_t fallback) {
    return attributes.getChild<IntAttribute>(name).getValue(fallback);
}

/// A colour from a float attribute with at least three values in the sample
/// nearest time 0.0; alpha is its fourth value, or 1.0.
[[gnu::always_inline]] inline bool readColor(const GroupAttribute& attributes,
                                             std::string_view name, std::array<float, 4>& color) {
    const FloatAttribute attribute = attributes.getChild<FloatAttribute>(name);
    if (!attribute.isValid()) return false;
    const SampleAccessor<float> samples(attribute, kTimeZero);
    if (samples.size() < kColorChannels) return false;
    color = {samples[0], samples[1], samples[2],
             samples.size() >= kColorChannelsWithAlpha ? samples[3] : 1.0f};
    return true;
}

/// The rest look carried through the world matrix without its translation and
/// normalised, or zero for a degenerate matrix.
Vec3d lookDirection(const Mat4d& worldMatrix) {
    return normalizedOrZero(transformDirection(kRestLook, worldMatrix));
}

/// updateIdentityAndPose, also inline in updateLightLocationData.
[[gnu::always_inline]] inline void identityAndPose(LightLocationData& data) {
    data.locationHash = data.pickerObject.getChildByName(kLocationAttribute).hash().words[0];
    data.position = translationOf(data.worldMatrix);
    data.direction = lookDirection(data.worldMatrix);
}

}  // namespace

GroupAttribute makePickerObject(const std::string& locationPath) {
    const StringAttribute location = StringAttribute::create(locationPath.c_str());
    return GroupBuilder().set(kLocationAttribute, location).build();
}

void updateIdentityAndPose(LightLocationData& data) { identityAndPose(data); }

void updateLightLocationData(LightLocationData& data) {
    const GroupAttribute& attributes = data.attributes;

    data.isLight = attributes.getChildByName(kTypeAttribute).hash().words[0] == lightTypeHash();

    data.showHandle = intOr(attributes, kHideAttribute, kNotHidden) == 0 &&
                      intOr(attributes, kHideHandleAttribute, kNotHidden) == 0;
    data.pickable = intOr(attributes, kPickableAttribute, kPickableByDefault) != 0;

    identityAndPose(data);

    const DoubleAttribute distance =
        attributes.getChild<DoubleAttribute>(kCenterOfInterestAttribute);
    if (!distance.isValid()) data.showHandle = false;
    data.centerOfInterest = data.position + data.direction * distance.getValue(kNoDistance);

    data.color = kDefaultLightColor;
    if (!readColor(attributes, kDrawColorAttribute, data.color))
        readColor(attributes, kPreviewColorAttribute, data.color);
}

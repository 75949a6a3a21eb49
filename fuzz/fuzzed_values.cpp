#include "fuzz/fuzzed_values.h"

#include <cmath>
#include <limits>
#include <utility>

#include "host/core/attribute_model.h"
#include "host/core/names.h"

namespace fuzzing {

using sorrel::AttrRef;

const std::vector<std::string> kOptionNames = {
    sorrel::names::kEnabled,
    sorrel::names::kManipulatorScale,
    sorrel::names::kExcludedLocationsPicking,
    sorrel::names::kIsUILayer,
    sorrel::names::kMode,
    sorrel::names::kDefaultDistance,
    sorrel::names::kDefaultShadowFallDistance,
    sorrel::names::kPackageClassName,
    sorrel::names::kMarquetteNodeName,
    sorrel::names::kShadowHandles,
    sorrel::names::kPositionLocked,
    sorrel::names::kFixedRotation,
    sorrel::names::kHandleAtOrigin,
    sorrel::names::kLightData,
    sorrel::names::kCurrentModifiers,
    sorrel::names::kSelectionMode,
    sorrel::names::kPreparePickOnDemand,
    sorrel::names::kPickOnDemand,
    "SomethingNobodyKnows",
};

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const std::array<double, 12> kOddReals = {
    0.0,   -0.0,  1.0,   -1.0,
    kNaN,  kInf,  -kInf, std::numeric_limits<double>::max(),
    1e-12, 0.001, 10.0,  std::numeric_limits<double>::denorm_min()};

const std::vector<std::string> kWords = {
    // event kinds and event children
    sorrel::names::kMouseMove, sorrel::names::kLeave, sorrel::names::kMouseButtonPress,
    sorrel::names::kMouseButtonRelease, "KeyPress", "type", "data", "x", "y", "button", "buttons",
    "modifiers",
    // placement modes
    "", "Edit Light Materials", "Fixed Rotation", "Normal", "Specular", "Reflection", "Shadow",
    "Face - Center", "Face - Center - Oriented to Normal", "Object Surface",
    "Object Surface - Oriented to Normal", "Object - Center",
    // picking and snapping
    "location", "point", "normal", sorrel::names::kPickStrategy, "Surface", "Face", "ObjectCentre",
    // location attributes
    "light", "group", "geometry", "centerOfInterest", "previewColor", "viewer", "default",
    "drawOptions", "color", "hide", "pickable", "beamwright", "hideHandle",
    sorrel::names::kGeometryCenterOfInterest, "viewer.default.drawOptions.color",
    // package commands
    sorrel::names::kPackagePosition, sorrel::names::kPackageRotation,
    sorrel::names::kPackageCenterOfInterest, sorrel::names::kPackageShadowFallDistance,
    sorrel::names::kPackageClassName, sorrel::names::kMarquetteNodeName, "SpotPackage"};

const std::vector<std::string> kPaths = {
    "/root",
    "/root/world",
    "/root/world/lgt",
    "/root/world/lgt/key",
    "/root/world/lgt/fill",
    "/root/world/lgt/key/child",
    "/root/world/geo",
    "/root/world/lgt/package1",
    "/root/world/lgt/package1/light",
    "/usd/World/Key",
    "/World",
    "/World/Key",
    "/World/Key/Rim",
    "/",
    "",
    "//",
    "/root/",
    "root",
    "/root//world",
    "/root/world/lgt/../key",
    "/root/w.o.r.l.d",
};

constexpr int kTypes = 6;

/// A group of the children that are set: a group's children are never null.
AttrRef groupOf(std::vector<std::pair<std::string, AttrRef>> children) {
    std::vector<std::pair<std::string, AttrRef>> set;
    for (auto& child : children)
        if (child.second) set.push_back(std::move(child));
    return sorrel::groupAttr(std::move(set));
}  // null, int, float, double, string, group

template <typename T, typename Make>
std::vector<std::vector<T>> samplesOf(std::size_t samples, std::size_t values, Make make) {
    std::vector<std::vector<T>> result(samples);
    for (auto& sample : result)
        for (std::size_t i = 0; i < values; ++i) sample.push_back(make());
    return result;
}

}  // namespace

double FuzzedValues::real() {
    switch (inRange(0, 7)) {
        case 0:
            return pick(kOddReals);
        case 1:
            return bytes_.ConsumeFloatingPoint<double>();
        default:
            return bytes_.ConsumeFloatingPointInRange<double>(-50.0, 50.0);
    }
}

std::int32_t FuzzedValues::pixel(std::int32_t extent) {
    if (inRange(0, 7) == 0) return any<std::int32_t>();
    return inRange<std::int32_t>(-2, extent + 1);
}

std::string FuzzedValues::text() {
    if (inRange(0, 5) == 0) return bytes_.ConsumeRandomLengthString(16);
    return pick(kWords);
}

std::string FuzzedValues::path() {
    switch (inRange(0, 9)) {
        case 0:
            return bytes_.ConsumeRandomLengthString(24);
        case 1:
            return pick(kPaths) + "/" + text();
        default:
            return pick(kPaths);
    }
}

sorrel::Matrix FuzzedValues::matrix() {
    sorrel::Matrix m = sorrel::kIdentity;
    switch (inRange(0, 5)) {
        case 0:
            return m;
        case 1:  // a translation
            for (int i = 12; i < 15; ++i) m[i] = real();
            return m;
        case 2: {  // a turn about y with a scale, then a translation
            const double angle = real();
            const double scale = real();
            m[0] = m[10] = std::cos(angle) * scale;
            m[2] = std::sin(angle) * scale;
            m[8] = -m[2];
            m[5] = scale;
            for (int i = 12; i < 15; ++i) m[i] = real();
            return m;
        }
        case 3:  // singular
            m[0] = m[5] = m[10] = 0.0;
            return m;
        case 4:
            m[inRange<std::size_t>(0, 15)] = kNaN;
            return m;
        default:
            for (double& v : m) v = real();
            return m;
    }
}

std::string FuzzedValues::childName() {
    switch (inRange(0, 5)) {
        case 0:
            return std::to_string(inRange<std::uint64_t>(0, 1u << 20));
        case 1:
            return bytes_.ConsumeRandomLengthString(12);
        default:
            return pick(kWords);
    }
}

AttrRef FuzzedValues::group(int depth) {
    std::vector<std::pair<std::string, AttrRef>> children;
    const int count = inRange(0, 4);
    for (int i = 0; i < count; ++i) children.emplace_back(childName(), attribute(depth - 1));
    return groupOf(std::move(children));
}

AttrRef FuzzedValues::attribute(int depth) {
    sorrel::AttributeModel& model = sorrel::AttributeModel::instance();
    const int type = inRange(0, kTypes - 1);
    if (type == 0) return AttrRef();
    if (type == 5) return depth > 0 ? group(depth) : AttrRef();

    // One sample of one value most of the time; none, or several, now and then.
    const bool plain = inRange(0, 3) != 0;
    const std::size_t samples = plain ? 1 : inRange<std::size_t>(0, 3);
    const std::size_t values = plain ? inRange<std::size_t>(1, 3) : inRange<std::size_t>(0, 5);
    std::vector<float> times;
    for (std::size_t s = 0; s < samples; ++s) times.push_back(plain ? 0.0f : realFloat());

    switch (type) {
        case 1:
            return AttrRef(model.makeIntSamples(
                times, samplesOf<std::int32_t>(samples, values, [this] {
                    return inRange(0, 3) == 0 ? any<std::int32_t>() : inRange<std::int32_t>(-1, 2);
                })));
        case 2:
            return AttrRef(model.makeFloatSamples(
                times, samplesOf<float>(samples, values, [this] { return realFloat(); })));
        case 3:
            return AttrRef(model.makeDoubleSamples(
                times, samplesOf<double>(samples, values, [this] { return real(); })));
        default:
            return AttrRef(model.makeStringSamples(
                times, samplesOf<std::string>(samples, values,
                                              [this] { return flip() ? path() : text(); })));
    }
}

AttrRef FuzzedValues::event(std::int32_t width, std::int32_t height) {
    if (inRange(0, 15) == 0) return attribute();
    static const std::vector<std::string> kKinds = {
        sorrel::names::kMouseMove, sorrel::names::kLeave, sorrel::names::kMouseButtonPress,
        sorrel::names::kMouseButtonRelease};
    const auto number = [this](std::int32_t extent) {
        return inRange(0, 11) == 0 ? attribute(1) : sorrel::intAttr(pixel(extent));
    };
    const auto flags = [this] {
        if (inRange(0, 11) == 0) return attribute(1);
        return sorrel::intAttr(
            flip() ? 0 : pick(std::vector<std::int32_t>{1, 2, 4, 0x02000000, 0x04000000, -1}));
    };
    std::vector<std::pair<std::string, AttrRef>> data;
    if (inRange(0, 15) != 0) data.emplace_back(sorrel::names::kEventX, number(width));
    if (inRange(0, 15) != 0) data.emplace_back(sorrel::names::kEventY, number(height));
    if (flip()) data.emplace_back("button", flags());
    if (inRange(0, 7) != 0) data.emplace_back("buttons", flags());
    if (inRange(0, 7) != 0) data.emplace_back("modifiers", flags());
    std::vector<std::pair<std::string, AttrRef>> event;
    if (inRange(0, 15) != 0)
        event.emplace_back(sorrel::names::kEventType,
                           inRange(0, 11) == 0 ? attribute(0) : sorrel::stringAttr(pick(kKinds)));
    if (inRange(0, 15) != 0)
        event.emplace_back("data", inRange(0, 15) == 0 ? attribute(1) : groupOf(std::move(data)));
    return groupOf(std::move(event));
}

AttrRef FuzzedValues::locationAttributes() {
    if (inRange(0, 11) == 0) return attribute();
    const auto maybe = [this](AttrRef usual) { return inRange(0, 7) == 0 ? attribute(1) : usual; };
    const auto flag = [this, &maybe] { return maybe(sorrel::intAttr(inRange(0, 2))); };
    const auto colour = [this, &maybe] {
        std::vector<float> channels(inRange<std::size_t>(2, 4));
        for (float& c : channels)
            c = flip() ? static_cast<float>(inRange(0, 255)) / 255 : realFloat();
        return maybe(sorrel::floatsAttr(std::move(channels)));
    };

    std::vector<std::pair<std::string, AttrRef>> geometry, drawOptions, beamwright, viewerDefault;
    if (inRange(0, 7) != 0)
        geometry.emplace_back(sorrel::names::kCenterOfInterest, maybe(sorrel::doubleAttr(real())));
    if (flip()) geometry.emplace_back("previewColor", colour());
    if (flip()) drawOptions.emplace_back("color", colour());
    if (inRange(0, 3) == 0) drawOptions.emplace_back("hide", flag());
    if (inRange(0, 3) == 0) beamwright.emplace_back("hideHandle", flag());
    if (inRange(0, 3) == 0) viewerDefault.emplace_back("pickable", flag());
    viewerDefault.emplace_back("drawOptions", groupOf(std::move(drawOptions)));
    viewerDefault.emplace_back("beamwright", groupOf(std::move(beamwright)));

    std::vector<std::pair<std::string, AttrRef>> top;
    if (inRange(0, 7) != 0)
        top.emplace_back(sorrel::names::kType,
                         maybe(sorrel::stringAttr(flip() ? sorrel::names::kLightType : text())));
    top.emplace_back(sorrel::names::kGeometry, groupOf(std::move(geometry)));
    top.emplace_back("viewer", groupOf({{"default", groupOf(std::move(viewerDefault))}}));
    return groupOf(std::move(top));
}

AttrRef FuzzedValues::optionValue(const std::string& option) {
    if (inRange(0, 3) == 0) return attribute();
    if (option == sorrel::names::kManipulatorScale || option == sorrel::names::kDefaultDistance ||
        option == sorrel::names::kDefaultShadowFallDistance)
        return sorrel::doubleAttr(real());
    if (option == sorrel::names::kMode || option == sorrel::names::kPackageClassName ||
        option == sorrel::names::kMarquetteNodeName)
        return sorrel::stringAttr(text());
    if (option == sorrel::names::kExcludedLocationsPicking) {
        std::vector<std::string> paths(inRange<std::size_t>(0, 4));
        for (std::string& p : paths) p = path();
        return AttrRef(sorrel::AttributeModel::instance().makeStrings(std::move(paths)));
    }
    return sorrel::intAttr(inRange(-1, 2));
}

}  // namespace fuzzing

#include "host/core/attribute_host_table.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_hash.h"
#include "host/core/attribute_model.h"
#include "host/core/group_builders.h"
#include "host/core/sample_blocks.h"

namespace sorrel {

namespace {

constexpr std::size_t kTablePositions = 70;

AttributeModel& model() { return AttributeModel::instance(); }

GroupBuilders& builders() {
    static GroupBuilders* const instance = new GroupBuilders;  // outlives every static user
    return *instance;
}

std::vector<std::uint64_t>& callCounts() {
    static std::vector<std::uint64_t> counts(kTablePositions, 0);
    return counts;
}
void countCall(std::size_t position) { ++callCounts().at(position); }

std::size_t nearestSample(const std::vector<float>& times, float time) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < times.size(); ++i)
        if (std::fabs(times[i] - time) < std::fabs(times[best] - time)) best = i;
    return best;
}

template <typename T>
bool nearestValue(const AttrNode* const* address, float time, std::int64_t index, int type,
                  const std::vector<std::vector<T>> AttrNode::*samples, T* out) {
    if (address == nullptr || *address == nullptr) return false;
    const AttrNode& node = model().read(*address);
    if (node.type != type || node.times.empty() || index < 0) return false;
    const auto& sample = (node.*samples)[nearestSample(node.times, time)];
    if (static_cast<std::size_t>(index) >= sample.size()) return false;
    *out = sample[static_cast<std::size_t>(index)];
    return true;
}

int getTypeFn(AttrHandle h) {
    countCall(2);
    if (h == nullptr) failAttributeHost("getType called with a null handle", h);
    return model().read(h).type;
}
void retainFn(AttrHandle h) {
    countCall(3);
    if (h != nullptr) model().retain(h);
}
void releaseFn(AttrHandle h) {
    countCall(4);
    if (h == nullptr) failAttributeHost("releaseAttr called with a null handle", h);
    model().release(h);
}
std::uint64_t* getHashFn(std::uint64_t* out, AttrHandle h) {
    countCall(6);
    const auto [a, b] = contentHash(model().read(h));
    out[0] = a;
    out[1] = b;
    return out;
}
AttrHandle createIntFn(std::int32_t v) {
    countCall(15);
    return model().makeInt(v);
}
AttrHandle createDoubleFn(double v) {
    countCall(25);
    return model().makeDouble(v);
}
AttrHandle createStringFn(const char* text) {
    countCall(30);
    return model().makeString(text != nullptr ? text : "");
}
AttrHandle createGroupFn(const char* const* names, const AttrHandle* children, std::int64_t count,
                         std::uint8_t) {
    countCall(34);
    std::vector<std::pair<std::string, AttrHandle>> kept;
    for (std::int64_t i = 0; i < count; ++i) {
        model().retain(children[i]);  // the caller keeps its own reference
        kept.emplace_back(names[i], children[i]);
    }
    return model().makeGroup(std::move(kept));
}
std::int64_t numberOfChildrenFn(AttrHandle h) {
    countCall(35);
    const AttrNode& node = model().read(h);
    return static_cast<std::int64_t>(node.children.size());
}
const char* childNameFn(AttrHandle h, std::int64_t index, std::int32_t* length) {
    countCall(36);
    const AttrNode& node = model().read(h);
    if (index < 0 || static_cast<std::size_t>(index) >= node.children.size()) {
        *length = 0;
        return "";
    }
    const std::string& name = node.children[static_cast<std::size_t>(index)].first;
    *length = static_cast<std::int32_t>(name.size());
    return name.c_str();
}
AttrHandle childByIndexFn(AttrHandle h, std::int64_t index) {
    countCall(37);
    const AttrNode& node = model().read(h);
    if (index < 0 || static_cast<std::size_t>(index) >= node.children.size()) return nullptr;
    AttrHandle child = node.children[static_cast<std::size_t>(index)].second;
    model().retain(child);
    return child;
}
AttrHandle childByNameFn(AttrHandle h, const char* name, std::int32_t length) {
    countCall(38);
    return model().childByPath(h, std::string(name, static_cast<std::size_t>(length)));
}
void* createBuilderFn() {
    countCall(40);
    return builders().create();
}
void releaseBuilderFn(void* b) {
    countCall(42);
    builders().release(b);
}
void builderSetFn(void* b, const char* name, std::int32_t length, AttrHandle value, std::uint8_t) {
    countCall(43);
    builders().set(b, std::string(name, static_cast<std::size_t>(length)), value);
}
AttrHandle builderBuildFn(void* b, std::uint8_t) {
    countCall(49);
    return builders().build(b);
}
bool nearestIntFn(const AttrNode* const* a, float t, std::int64_t i, std::int32_t* out) {
    countCall(54);
    return nearestValue(a, t, i, kInt, &AttrNode::ints, out);
}
bool nearestDoubleFn(const AttrNode* const* a, float t, std::int64_t i, double* out) {
    countCall(56);
    return nearestValue(a, t, i, kDouble, &AttrNode::doubles, out);
}
bool nearestStringFn(const AttrNode* const* a, float t, std::int64_t i, const char** out) {
    countCall(57);
    if (a == nullptr || *a == nullptr) return false;
    const AttrNode& node = model().read(*a);
    if (node.type != kString || node.times.empty() || i < 0) return false;
    const auto& sample = node.strings[nearestSample(node.times, t)];
    if (static_cast<std::size_t>(i) >= sample.size()) return false;
    *out = sample[static_cast<std::size_t>(i)].c_str();
    return true;
}
const void* sampleBlockFn(AttrHandle h, int type, std::uint8_t, void* inlineBuffer) {
    countCall(61);
    return SampleBlocks::instance().lend(model().read(h), type, inlineBuffer);
}
void releaseSampleBlockFn(const void* block) {
    countCall(63);
    SampleBlocks::instance().giveBack(block);
}
AttrHandle createDoubleSamplesFn(const float* times, std::int64_t timeCount,
                                 const double* const* values, std::int64_t valueCount,
                                 std::int64_t tupleSize, void*, void*) {
    countCall(66);
    (void)tupleSize;
    std::vector<float> sampleTimes(times, times + timeCount);
    std::vector<std::vector<double>> samples;
    for (std::int64_t s = 0; s < timeCount; ++s)
        samples.emplace_back(values[s], values[s] + valueCount);
    return model().makeDoubleSamples(std::move(sampleTimes), std::move(samples));
}

}  // namespace

const SuiteTable& attributeHostTable() {
    static const SuiteTable table = [] {
        SuiteTable table("AttributeHost");
        table.set(2, &getTypeFn)
            .set(3, &retainFn)
            .set(4, &releaseFn)
            .set(6, &getHashFn)
            .set(15, &createIntFn)
            .set(25, &createDoubleFn)
            .set(30, &createStringFn)
            .set(34, &createGroupFn)
            .set(35, &numberOfChildrenFn)
            .set(36, &childNameFn)
            .set(37, &childByIndexFn)
            .set(38, &childByNameFn)
            .set(40, &createBuilderFn)
            .set(42, &releaseBuilderFn)
            .set(43, &builderSetFn)
            .set(49, &builderBuildFn)
            .set(54, &nearestIntFn)
            .set(56, &nearestDoubleFn)
            .set(57, &nearestStringFn)
            .set(61, &sampleBlockFn)
            .set(63, &releaseSampleBlockFn)
            .set(66, &createDoubleSamplesFn);
        return table;
    }();
    return table;
}

std::uint64_t attributeHostCalls(std::size_t position) { return callCounts().at(position); }

std::int64_t outstandingGroupBuilders() { return builders().outstanding(); }

}  // namespace sorrel

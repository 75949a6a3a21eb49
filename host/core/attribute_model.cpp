#include "host/core/attribute_model.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <sstream>
#include <unordered_set>

namespace sorrel {

namespace {

constexpr std::size_t kTablePositions = 70;
constexpr std::size_t kDeadNodesKept = 1 << 16;
constexpr std::uint8_t kBlockMustRelease = 1;
constexpr std::uint8_t kBlockContiguous = 16;

// The sample block as the plugin reads it.
struct RawSampleBlock {
    std::uint32_t reserved0 = 0;
    std::uint8_t flags = 0;
    std::uint8_t reserved5[3] = {};
    std::int64_t sampleCount = 0;
    std::int64_t valuesPerSample = 0;
    const float* sampleTimes = nullptr;
    const void* sampleData = nullptr;
};
static_assert(sizeof(RawSampleBlock) == 40);

struct HeapBlock {
    RawSampleBlock block;  // first, so that the block's address is the record's
    std::vector<unsigned char> contiguous;
    std::vector<const void*> perSample;
};

struct Builder {
    std::vector<std::pair<std::string, AttrHandle>> children;
};

[[noreturn]] void fail(const char* what, const AttrNode* node) {
    std::fprintf(stderr, "attribute host: %s (handle %p)\n", what, static_cast<const void*>(node));
    std::fflush(stderr);
    std::abort();
}

std::unordered_set<const AttrNode*>& liveNodes() {
    static std::unordered_set<const AttrNode*> nodes;
    return nodes;
}
std::unordered_set<const AttrNode*>& deadNodes() {
    static std::unordered_set<const AttrNode*> nodes;
    return nodes;
}
std::unordered_set<const Builder*>& liveBuilders() {
    static std::unordered_set<const Builder*> builders;
    return builders;
}
std::unordered_set<const HeapBlock*>& heapBlocks() {
    static std::unordered_set<const HeapBlock*> blocks;
    return blocks;
}

std::size_t nearestSample(const std::vector<float>& times, float time) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < times.size(); ++i)
        if (std::fabs(times[i] - time) < std::fabs(times[best] - time)) best = i;
    return best;
}

// FNV-1a over a serialisation of the content, with two seeds for two words.
struct Hasher {
    std::uint64_t a = 14695981039346656037ull;
    std::uint64_t b = 0x9E3779B97F4A7C15ull;
    void bytes(const void* data, std::size_t size) {
        const auto* p = static_cast<const unsigned char*>(data);
        for (std::size_t i = 0; i < size; ++i) {
            a = (a ^ p[i]) * 1099511628211ull;
            b = (b ^ p[i]) * 0x100000001B3ull + 0x2545F4914F6CDD1Dull;
        }
    }
    void text(const std::string& s) {
        const std::uint64_t n = s.size();
        bytes(&n, sizeof n);
        bytes(s.data(), s.size());
    }
    template <typename T>
    void values(const std::vector<std::vector<T>>& samples) {
        for (const auto& sample : samples) {
            const std::uint64_t n = sample.size();
            bytes(&n, sizeof n);
            if (!sample.empty()) bytes(sample.data(), sample.size() * sizeof(T));
        }
    }
};

void hashNode(Hasher& h, const AttrNode& node) {
    h.bytes(&node.type, sizeof node.type);
    if (!node.times.empty()) h.bytes(node.times.data(), node.times.size() * sizeof(float));
    h.values(node.ints);
    h.values(node.floats);
    h.values(node.doubles);
    for (const auto& sample : node.strings)
        for (const auto& s : sample) h.text(s);
    for (const auto& [name, child] : node.children) {
        h.text(name);
        hashNode(h, *child);
    }
}

AttributeModel& model() { return AttributeModel::instance(); }

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

// ---- the table's functions ----

int getTypeFn(AttrHandle h) {
    model().countCall(2);
    if (h == nullptr) fail("getType called with a null handle", h);
    return model().read(h).type;
}
void retainFn(AttrHandle h) {
    model().countCall(3);
    if (h != nullptr) model().retain(h);
}
void releaseFn(AttrHandle h) {
    model().countCall(4);
    if (h == nullptr) fail("releaseAttr called with a null handle", h);
    model().release(h);
}
std::uint64_t* getHashFn(std::uint64_t* out, AttrHandle h) {
    model().countCall(6);
    const auto [a, b] = model().hashOf(h);
    out[0] = a;
    out[1] = b;
    return out;
}
AttrHandle createIntFn(std::int32_t v) {
    model().countCall(15);
    return model().makeInt(v);
}
AttrHandle createDoubleFn(double v) {
    model().countCall(25);
    return model().makeDouble(v);
}
AttrHandle createStringFn(const char* text) {
    model().countCall(30);
    return model().makeString(text != nullptr ? text : "");
}
AttrHandle createGroupFn(const char* const* names, const AttrHandle* children, std::int64_t count,
                         std::uint8_t) {
    model().countCall(34);
    std::vector<std::pair<std::string, AttrHandle>> kept;
    for (std::int64_t i = 0; i < count; ++i) {
        model().retain(children[i]);  // the caller keeps its own reference
        kept.emplace_back(names[i], children[i]);
    }
    return model().makeGroup(std::move(kept));
}
std::int64_t numberOfChildrenFn(AttrHandle h) {
    model().countCall(35);
    const AttrNode& node = model().read(h);
    return static_cast<std::int64_t>(node.children.size());
}
const char* childNameFn(AttrHandle h, std::int64_t index, std::int32_t* length) {
    model().countCall(36);
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
    model().countCall(37);
    const AttrNode& node = model().read(h);
    if (index < 0 || static_cast<std::size_t>(index) >= node.children.size()) return nullptr;
    AttrHandle child = node.children[static_cast<std::size_t>(index)].second;
    model().retain(child);
    return child;
}
AttrHandle childByNameFn(AttrHandle h, const char* name, std::int32_t length) {
    model().countCall(38);
    return model().childByPath(h, std::string(name, static_cast<std::size_t>(length)));
}
void* createBuilderFn() {
    model().countCall(40);
    auto* builder = new Builder;
    liveBuilders().insert(builder);
    return builder;
}
Builder* checkedBuilder(void* b) {
    auto* builder = static_cast<Builder*>(b);
    if (liveBuilders().count(builder) == 0) fail("unknown or released group builder", nullptr);
    return builder;
}
void releaseBuilderFn(void* b) {
    model().countCall(42);
    Builder* builder = checkedBuilder(b);
    for (auto& [name, child] : builder->children) model().release(child);
    liveBuilders().erase(builder);
    delete builder;
}
void builderSetFn(void* b, const char* name, std::int32_t length, AttrHandle value, std::uint8_t) {
    model().countCall(43);
    Builder* builder = checkedBuilder(b);
    const std::string key(name, static_cast<std::size_t>(length));
    if (value != nullptr) model().retain(value);
    for (auto& entry : builder->children) {
        if (entry.first == key) {
            if (entry.second != nullptr) model().release(entry.second);
            entry.second = value;
            return;
        }
    }
    builder->children.emplace_back(key, value);
}
AttrHandle builderBuildFn(void* b, std::uint8_t) {
    model().countCall(49);
    Builder* builder = checkedBuilder(b);
    std::vector<std::pair<std::string, AttrHandle>> children;
    for (auto& [name, child] : builder->children) {
        if (child == nullptr) continue;
        model().retain(child);
        children.emplace_back(name, child);
    }
    return model().makeGroup(std::move(children));
}
bool nearestIntFn(const AttrNode* const* a, float t, std::int64_t i, std::int32_t* out) {
    model().countCall(54);
    return nearestValue(a, t, i, kInt, &AttrNode::ints, out);
}
bool nearestDoubleFn(const AttrNode* const* a, float t, std::int64_t i, double* out) {
    model().countCall(56);
    return nearestValue(a, t, i, kDouble, &AttrNode::doubles, out);
}
bool nearestStringFn(const AttrNode* const* a, float t, std::int64_t i, const char** out) {
    model().countCall(57);
    if (a == nullptr || *a == nullptr) return false;
    const AttrNode& node = model().read(*a);
    if (node.type != kString || node.times.empty() || i < 0) return false;
    const auto& sample = node.strings[nearestSample(node.times, t)];
    if (static_cast<std::size_t>(i) >= sample.size()) return false;
    *out = sample[static_cast<std::size_t>(i)].c_str();
    return true;
}
const void* sampleBlockFn(AttrHandle h, int type, std::uint8_t, void* inlineBuffer) {
    model().countCall(61);
    return model().sampleBlock(h, type, inlineBuffer);
}
void releaseSampleBlockFn(const void* block) {
    model().countCall(63);
    model().releaseSampleBlock(block);
}
AttrHandle createDoubleSamplesFn(const float* times, std::int64_t timeCount,
                                 const double* const* values, std::int64_t valueCount,
                                 std::int64_t tupleSize, void*, void*) {
    model().countCall(66);
    (void)tupleSize;
    std::vector<float> sampleTimes(times, times + timeCount);
    std::vector<std::vector<double>> samples;
    for (std::int64_t s = 0; s < timeCount; ++s)
        samples.emplace_back(values[s], values[s] + valueCount);
    return model().makeDoubleSamples(std::move(sampleTimes), std::move(samples));
}

std::size_t valueWidth(int type) {
    switch (type) {
        case kInt:
            return sizeof(std::int32_t);
        case kFloat:
            return sizeof(float);
        case kDouble:
            return sizeof(double);
        case kString:
            return sizeof(const char*);
        default:
            return 0;
    }
}

const void* sampleValues(const AttrNode& node, std::size_t sample) {
    switch (node.type) {
        case kInt:
            return node.ints[sample].data();
        case kFloat:
            return node.floats[sample].data();
        case kDouble:
            return node.doubles[sample].data();
        case kString:
            return node.stringPointers[sample].data();
        default:
            return nullptr;
    }
}

}  // namespace

std::size_t AttrNode::valuesPerSample() const {
    switch (type) {
        case kInt:
            return ints.empty() ? 0 : ints[0].size();
        case kFloat:
            return floats.empty() ? 0 : floats[0].size();
        case kDouble:
            return doubles.empty() ? 0 : doubles[0].size();
        case kString:
            return strings.empty() ? 0 : strings[0].size();
        default:
            return 0;
    }
}

AttributeModel& AttributeModel::instance() {
    static AttributeModel* model = new AttributeModel;  // outlives every static user
    return *model;
}

AttributeModel::AttributeModel() : table_("AttributeHost"), calls_(kTablePositions, 0) {
    table_.set(2, &getTypeFn)
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
}

AttrHandle AttributeModel::adoptNode(std::unique_ptr<AttrNode> node) {
    node->serial = nextSerial_++;
    node->references = 1;
    ++liveReferences_;
    if (node->type == kString) {
        for (const auto& sample : node->strings) {
            std::vector<const char*> pointers;
            for (const auto& s : sample) pointers.push_back(s.c_str());
            node->stringPointers.push_back(std::move(pointers));
        }
    }
    AttrNode* raw = node.release();
    liveNodes().insert(raw);
    return raw;
}

namespace {
template <typename T>
std::unique_ptr<AttrNode> sampled(int type, std::vector<float> times,
                                  std::vector<std::vector<T>> samples,
                                  std::vector<std::vector<T>> AttrNode::*field) {
    auto node = std::make_unique<AttrNode>();
    node->type = type;
    node->times = std::move(times);
    (*node).*field = std::move(samples);
    return node;
}
}  // namespace

AttrHandle AttributeModel::makeInt(std::int32_t v) { return makeInts({v}); }
AttrHandle AttributeModel::makeInts(std::vector<std::int32_t> v) {
    return adoptNode(sampled<std::int32_t>(kInt, {0.0f}, {std::move(v)}, &AttrNode::ints));
}
AttrHandle AttributeModel::makeFloat(float v) { return makeFloats({v}); }
AttrHandle AttributeModel::makeFloats(std::vector<float> v) {
    return makeFloatSamples({0.0f}, {std::move(v)});
}
AttrHandle AttributeModel::makeDouble(double v) { return makeDoubles({v}); }
AttrHandle AttributeModel::makeDoubles(std::vector<double> v) {
    return makeDoubleSamples({0.0f}, {std::move(v)});
}
AttrHandle AttributeModel::makeString(const std::string& text) { return makeStrings({text}); }
AttrHandle AttributeModel::makeStrings(std::vector<std::string> texts) {
    return adoptNode(sampled<std::string>(kString, {0.0f}, {std::move(texts)}, &AttrNode::strings));
}
AttrHandle AttributeModel::makeDoubleSamples(std::vector<float> times,
                                             std::vector<std::vector<double>> samples) {
    return adoptNode(sampled(kDouble, std::move(times), std::move(samples), &AttrNode::doubles));
}
AttrHandle AttributeModel::makeFloatSamples(std::vector<float> times,
                                            std::vector<std::vector<float>> samples) {
    return adoptNode(sampled(kFloat, std::move(times), std::move(samples), &AttrNode::floats));
}
AttrHandle AttributeModel::makeGroup(std::vector<std::pair<std::string, AttrHandle>> children) {
    auto node = std::make_unique<AttrNode>();
    node->type = kGroup;
    node->children = std::move(children);
    return adoptNode(std::move(node));
}

AttrNode& AttributeModel::read(const AttrNode* handle) const {
    // Nodes are the model's own; readers get them back as they were made.
    if (liveNodes().count(handle) != 0) return *const_cast<AttrNode*>(handle);
    if (deadNodes().count(handle) != 0) {
        std::fprintf(stderr, "attribute host: use of released attribute #%llu\n",
                     static_cast<unsigned long long>(handle->serial));
        fail("dead handle", handle);
    }
    fail("unknown handle", handle);
}

void AttributeModel::retain(AttrHandle handle) {
    read(handle);
    ++handle->references;
    ++liveReferences_;
}

void AttributeModel::release(AttrHandle handle) {
    read(handle);
    --liveReferences_;
    if (--handle->references == 0) destroy(handle);
}

void AttributeModel::destroy(AttrNode* node) {
    liveNodes().erase(node);
    for (auto& [name, child] : node->children) release(child);
    node->children.clear();
    // Keep the node for a while so that a late use can be named, not confused.
    deadNodes().insert(node);
    dead_.emplace_back(node);
    if (dead_.size() > kDeadNodesKept) {
        dead_.erase(dead_.begin(), dead_.begin() + kDeadNodesKept / 2);
        deadNodes().clear();
        for (const auto& kept : dead_) deadNodes().insert(kept.get());
    }
}

AttrHandle AttributeModel::childByPath(AttrHandle group, const std::string& path) {
    AttrHandle current = group;
    std::size_t start = 0;
    while (true) {
        const AttrNode& node = read(current);
        if (node.type != kGroup) return nullptr;
        const std::size_t dot = path.find('.', start);
        const std::string name = path.substr(start, dot == std::string::npos ? dot : dot - start);
        AttrHandle next = nullptr;
        for (const auto& [childName, child] : node.children)
            if (childName == name) next = child;
        if (next == nullptr) return nullptr;
        if (dot == std::string::npos) {
            retain(next);
            return next;
        }
        current = next;
        start = dot + 1;
    }
}

std::pair<std::uint64_t, std::uint64_t> AttributeModel::hashOf(AttrHandle handle) const {
    Hasher h;
    hashNode(h, read(handle));
    return {h.a, h.b};
}

std::string AttributeModel::describe(AttrHandle handle) const {
    if (handle == nullptr) return "null";
    const AttrNode& node = read(handle);
    std::ostringstream out;
    auto list = [&out](const auto& samples) {
        out << '(';
        for (std::size_t s = 0; s < samples.size(); ++s) {
            for (std::size_t i = 0; i < samples[s].size(); ++i)
                out << (i ? ", " : "") << samples[s][i];
            if (s + 1 < samples.size()) out << " | ";
        }
        out << ')';
    };
    switch (node.type) {
        case kInt:
            out << "int";
            list(node.ints);
            break;
        case kFloat:
            out << "float";
            list(node.floats);
            break;
        case kDouble:
            out << "double";
            list(node.doubles);
            break;
        case kString:
            out << "string";
            list(node.strings);
            break;
        case kGroup:
            out << '{';
            for (std::size_t i = 0; i < node.children.size(); ++i)
                out << (i ? ", " : "") << node.children[i].first << ": "
                    << describe(node.children[i].second);
            out << '}';
            break;
        default:
            out << "?";
    }
    return out.str();
}

const void* AttributeModel::sampleBlock(AttrHandle handle, int typeCode, void* inlineBuffer) {
    const AttrNode& node = read(handle);
    if (node.type != typeCode || valueWidth(typeCode) == 0) return nullptr;
    const std::size_t samples = node.sampleCount();
    const std::size_t perSample = node.valuesPerSample();

    if (blockPolicy.useInlineBuffer && inlineBuffer != nullptr && samples == 1 &&
        blockPolicy.contiguous) {
        auto* block = new (inlineBuffer) RawSampleBlock;
        block->flags = kBlockContiguous;
        block->sampleCount = 1;
        block->valuesPerSample = static_cast<std::int64_t>(perSample);
        block->sampleTimes = node.times.data();
        block->sampleData = sampleValues(node, 0);
        return block;
    }

    auto* heap = new HeapBlock;
    heap->block.flags = kBlockMustRelease | (blockPolicy.contiguous ? kBlockContiguous : 0);
    heap->block.sampleCount = static_cast<std::int64_t>(samples);
    heap->block.valuesPerSample = static_cast<std::int64_t>(perSample);
    heap->block.sampleTimes = node.times.data();
    const std::size_t width = valueWidth(typeCode);
    if (blockPolicy.contiguous) {
        heap->contiguous.resize(samples * perSample * width);
        for (std::size_t s = 0; s < samples; ++s)
            std::memcpy(heap->contiguous.data() + s * perSample * width, sampleValues(node, s),
                        perSample * width);
        heap->block.sampleData = heap->contiguous.data();
    } else {
        for (std::size_t s = 0; s < samples; ++s) heap->perSample.push_back(sampleValues(node, s));
        heap->block.sampleData = heap->perSample.data();
    }
    heapBlocks().insert(heap);
    ++outstandingBlocks_;
    return &heap->block;
}

void AttributeModel::releaseSampleBlock(const void* block) {
    const auto* heap = static_cast<const HeapBlock*>(block);
    if (heapBlocks().erase(heap) == 0) fail("release of a sample block that needs none", nullptr);
    --outstandingBlocks_;
    delete heap;
}

// ---- AttrRef ----

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

}  // namespace sorrel

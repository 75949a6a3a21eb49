#include "host/core/attribute_model.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <unordered_set>

namespace sorrel {

namespace {

constexpr std::size_t kDeadNodesKept = 1 << 16;

std::unordered_set<const AttrNode*>& liveNodes() {
    static std::unordered_set<const AttrNode*> nodes;
    return nodes;
}
std::unordered_set<const AttrNode*>& deadNodes() {
    static std::unordered_set<const AttrNode*> nodes;
    return nodes;
}

}  // namespace

void failAttributeHost(const char* what, const AttrNode* node) {
    std::fprintf(stderr, "attribute host: %s (handle %p)\n", what, static_cast<const void*>(node));
    std::fflush(stderr);
    std::abort();
}

AttributeModel& AttributeModel::instance() {
    static AttributeModel* model = new AttributeModel;  // outlives every static user
    return *model;
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
AttrHandle AttributeModel::makeIntSamples(std::vector<float> times,
                                          std::vector<std::vector<std::int32_t>> samples) {
    return adoptNode(sampled(kInt, std::move(times), std::move(samples), &AttrNode::ints));
}
AttrHandle AttributeModel::makeStringSamples(std::vector<float> times,
                                             std::vector<std::vector<std::string>> samples) {
    return adoptNode(sampled(kString, std::move(times), std::move(samples), &AttrNode::strings));
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
        failAttributeHost("dead handle", handle);
    }
    failAttributeHost("unknown handle", handle);
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

}  // namespace sorrel

#include "host/core/attribute_hash.h"

namespace sorrel {

namespace {

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

}  // namespace

std::pair<std::uint64_t, std::uint64_t> contentHash(const AttrNode& node) {
    Hasher h;
    hashNode(h, node);
    return {h.a, h.b};
}

}  // namespace sorrel

#pragma once
// One attribute of the host's attribute model, as the model stores it: int,
// float, double, string or group values, several values per sample and several
// time samples. Handles given to the plugin are the nodes' addresses.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sorrel {

enum AttrType : int { kInt = 1, kFloat = 2, kDouble = 3, kString = 4, kGroup = 5 };

struct AttrNode;
using AttrHandle = AttrNode*;

/// Values are stored per sample; a group's children hold a reference each.
struct AttrNode {
    int type = 0;
    std::uint64_t serial = 0;
    int references = 0;
    std::vector<float> times;                     // one per sample
    std::vector<std::vector<std::int32_t>> ints;  // [sample][value]
    std::vector<std::vector<float>> floats;
    std::vector<std::vector<double>> doubles;
    std::vector<std::vector<std::string>> strings;
    std::vector<std::pair<std::string, AttrHandle>> children;
    // Text pointers of `strings`, kept for sample blocks.
    std::vector<std::vector<const char*>> stringPointers;

    std::size_t sampleCount() const { return times.size(); }
    std::size_t valuesPerSample() const;
};

}  // namespace sorrel

#pragma once
// The host's attribute model: the store of every attribute the host and the
// plugin make, with reference accounting.
//
// Every attribute counts its live references. Releasing or reading a dead
// handle aborts with the handle's serial number, and tests end by comparing
// liveReferences() with the count they started from.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_node.h"

namespace sorrel {

/// The process's attribute model (the plugin's table takes no context, so the
/// host side is one instance).
class AttributeModel {
public:
    static AttributeModel& instance();

    // Makers used by the host and by tests; each result is owned by the caller.
    AttrHandle makeInt(std::int32_t value);
    AttrHandle makeInts(std::vector<std::int32_t> values);
    AttrHandle makeFloat(float value);
    AttrHandle makeFloats(std::vector<float> values);
    AttrHandle makeDouble(double value);
    AttrHandle makeDoubles(std::vector<double> values);
    AttrHandle makeString(const std::string& text);
    AttrHandle makeStrings(std::vector<std::string> texts);
    /// Several samples of one type: times[i] holds samples[i].
    AttrHandle makeDoubleSamples(std::vector<float> times,
                                 std::vector<std::vector<double>> samples);
    AttrHandle makeFloatSamples(std::vector<float> times, std::vector<std::vector<float>> samples);
    AttrHandle makeIntSamples(std::vector<float> times,
                              std::vector<std::vector<std::int32_t>> samples);
    AttrHandle makeStringSamples(std::vector<float> times,
                                 std::vector<std::vector<std::string>> samples);
    /// A group; takes over the children's references.
    AttrHandle makeGroup(std::vector<std::pair<std::string, AttrHandle>> children);

    void retain(AttrHandle handle);
    void release(AttrHandle handle);
    /// Aborts naming the handle unless it is alive.
    AttrNode& read(const AttrNode* handle) const;

    /// A child by dotted path, a new reference, or null.
    AttrHandle childByPath(AttrHandle group, const std::string& path);
    /// Readable text of an attribute, for test failures and the demo.
    std::string describe(AttrHandle handle) const;

    /// References held by every live attribute, group children included.
    std::int64_t liveReferences() const { return liveReferences_; }

private:
    AttributeModel() = default;
    AttrHandle adoptNode(std::unique_ptr<AttrNode> node);
    void destroy(AttrNode* node);

    std::vector<std::unique_ptr<AttrNode>> dead_;  // kept so that a dead handle can be named
    std::uint64_t nextSerial_ = 1;
    std::int64_t liveReferences_ = 0;
};

/// Reports a misuse of the attribute host (a null, dead or unknown handle or
/// builder) and aborts.
[[noreturn]] void failAttributeHost(const char* what, const AttrNode* node);

}  // namespace sorrel

#pragma once
// The host's attribute model: int, float, double, string and group values with
// several values and several time samples, content hashes, group builders and
// sample blocks, behind the "AttributeHost" table.
//
// Reference accounting: every attribute counts its live references. Releasing
// or reading a dead handle aborts with the handle's serial number, and tests
// end by comparing liveReferences() with the count they started from.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/core/suite_table.h"

namespace sorrel {

enum AttrType : int { kInt = 1, kFloat = 2, kDouble = 3, kString = 4, kGroup = 5 };

struct AttrNode;
using AttrHandle = AttrNode*;

/// One attribute. Values are stored per sample; a group's children hold a
/// reference each.
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

/// The process's attribute model (the plugin's table takes no context, so the
/// host side is one instance).
class AttributeModel {
public:
    static AttributeModel& instance();

    /// The "AttributeHost" version 5 table.
    const SuiteTable& table() const { return table_; }

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
    /// A group; takes over the children's references.
    AttrHandle makeGroup(std::vector<std::pair<std::string, AttrHandle>> children);

    void retain(AttrHandle handle);
    void release(AttrHandle handle);
    /// Aborts naming the handle unless it is alive.
    AttrNode& read(const AttrNode* handle) const;

    /// A child by dotted path, a new reference, or null.
    AttrHandle childByPath(AttrHandle group, const std::string& path);
    /// Content hash of two words; equal contents, equal hash.
    std::pair<std::uint64_t, std::uint64_t> hashOf(AttrHandle handle) const;
    /// Readable text of an attribute, for test failures and the demo.
    std::string describe(AttrHandle handle) const;

    /// References held by every live attribute, group children included.
    std::int64_t liveReferences() const { return liveReferences_; }
    /// Sample blocks handed out with the release bit that were not given back.
    std::int64_t outstandingSampleBlocks() const { return outstandingBlocks_; }
    /// How many times each table position was called (for tests).
    std::uint64_t calls(std::size_t position) const { return calls_.at(position); }
    void countCall(std::size_t position) { ++calls_.at(position); }

    /// Sample blocks: contiguous values (or one pointer per sample), and whether
    /// the block is given in the caller's inline buffer or must be released.
    struct BlockPolicy {
        bool contiguous = true;
        bool useInlineBuffer = true;
    };
    BlockPolicy blockPolicy;

    // Entry points behind the table, public so that the table can point at them.
    const void* sampleBlock(AttrHandle handle, int typeCode, void* inlineBuffer);
    void releaseSampleBlock(const void* block);

private:
    AttributeModel();
    AttrHandle adoptNode(std::unique_ptr<AttrNode> node);
    void destroy(AttrNode* node);

    SuiteTable table_;
    std::vector<std::unique_ptr<AttrNode>> dead_;  // kept so that a dead handle can be named
    std::uint64_t nextSerial_ = 1;
    std::int64_t liveReferences_ = 0;
    std::int64_t outstandingBlocks_ = 0;
    std::vector<std::uint64_t> calls_;
};

/// A reference that the host side owns, released at scope end.
class AttrRef {
public:
    AttrRef() = default;
    explicit AttrRef(AttrHandle handle) : handle_(handle) {}
    /// A reference of its own to a handle that the caller only lends.
    static AttrRef borrow(void* handle);
    AttrRef(const AttrRef& other);
    AttrRef(AttrRef&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    AttrRef& operator=(AttrRef other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~AttrRef();

    AttrHandle get() const { return handle_; }
    /// Gives the reference away (to an entry that consumes it).
    AttrHandle release() { return std::exchange(handle_, nullptr); }
    explicit operator bool() const { return handle_ != nullptr; }
    /// A child by dotted path, or a null reference.
    AttrRef child(const std::string& path) const;
    int type() const;
    std::int32_t intValue(std::size_t index = 0) const;
    float floatValue(std::size_t index = 0) const;
    double doubleValue(std::size_t index = 0) const;
    std::string stringValue(std::size_t index = 0) const;
    std::size_t valueCount() const;
    std::string describe() const;

private:
    AttrHandle handle_ = nullptr;
};

// Short makers for tests and the host's own scenes.
AttrRef intAttr(std::int32_t value);
AttrRef floatAttr(float value);
AttrRef floatsAttr(std::vector<float> values);
AttrRef doubleAttr(double value);
AttrRef doublesAttr(std::vector<double> values);
AttrRef stringAttr(const std::string& text);
AttrRef groupAttr(std::vector<std::pair<std::string, AttrRef>> children);

}  // namespace sorrel

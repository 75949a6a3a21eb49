#pragma once
// vrt::Prim and vrt::Attribute: a prim of a stage with its applied schemas,
// time-sampled attributes and local transformation.

#include <map>
#include <memory>
#include <set>
#include <string>

#include "lqm/mat4.h"
#include "vrt/path.h"
#include "vrt/token.h"
#include "vrt/value.h"

namespace vrt {

/// What a prim holds; shared by the prim handles of the stage.
struct PrimData {
    Path path;
    std::set<std::string> appliedApis;
    std::map<std::string, std::map<double, Value>> attributes;  // name -> time -> value
    lqm::Mat4<double> localTransformation;
    bool resetsXformStack = false;
};

class Attribute {
public:
    Attribute() = default;
    explicit Attribute(const std::map<double, Value>* samples) : samples_(samples) {}

    /// False when the prim has no such attribute.
    bool isValid() const { return samples_ != nullptr; }
    /// Fills `value` with the sample held at `time` (the latest at or before
    /// it, or the first); returns 1 when a value was read, 0 otherwise.
    unsigned getValue(Value& value, double time) const;

private:
    const std::map<double, Value>* samples_ = nullptr;
};

class Prim {
public:
    Prim() = default;
    explicit Prim(std::shared_ptr<PrimData> data) : data_(std::move(data)) {}

    bool isValid() const { return data_ != nullptr; }
    const Path& getPath() const { return data_->path; }
    bool hasApi(const Token& schema) const;
    Attribute getAttr(const Token& name) const;

    // Authoring, for whoever builds the stage.
    void applyApi(const Token& schema) { data_->appliedApis.insert(schema.string()); }
    void removeApi(const Token& schema) { data_->appliedApis.erase(schema.string()); }
    void setAttr(const Token& name, Value value, double time = 0.0);
    void removeAttr(const Token& name) { data_->attributes.erase(name.string()); }
    void setLocalTransformation(const lqm::Mat4<double>& matrix) {
        data_->localTransformation = matrix;
    }
    const PrimData& data() const { return *data_; }

private:
    std::shared_ptr<PrimData> data_;
};

}  // namespace vrt

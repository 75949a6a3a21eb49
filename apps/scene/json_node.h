#pragma once
// One value of a parsed scene file together with the key path that leads to
// it, so that every complaint about it names the file and the place:
// "studio.json: lights[2].cone.angle: expected a number, got a string".

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"

namespace viewer {

class JsonNode {
public:
    JsonNode(const nlohmann::json& value, std::string file, std::string where);

    /// Throws a SceneFileError naming the file and this node's place.
    [[noreturn]] void fail(const std::string& what) const;

    /// The child of an object under `key`, which must be there.
    JsonNode operator[](const char* key) const;
    /// The child under `key`, or nothing when the object has none.
    std::optional<JsonNode> find(const char* key) const;
    bool has(const char* key) const { return find(key).has_value(); }
    /// Fails unless this is an object whose keys are all among `allowed`.
    void expectKeys(std::initializer_list<const char*> allowed) const;
    /// The elements of an array, each with its index in its place.
    std::vector<JsonNode> elements() const;
    /// The keys of an object with their values, in sorted key order.
    std::vector<std::pair<std::string, JsonNode>> members() const;

    bool isNumber() const { return value_.is_number(); }
    double number() const;
    /// A number greater than zero.
    double positive() const;
    int integer() const;
    bool boolean() const;
    std::string text() const;
    Vec3 vec3() const;
    Pixel pixel() const;
    std::vector<std::string> texts() const;

private:
    /// Fails unless the value is of `type`, named as a message says it.
    void expect(nlohmann::json::value_t type, const char* name) const;
    JsonNode child(const nlohmann::json& value, const std::string& step) const;

    const nlohmann::json& value_;
    std::string file_;
    std::string where_;
};

}  // namespace viewer

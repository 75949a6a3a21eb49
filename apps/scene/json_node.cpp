#include "apps/scene/json_node.h"

#include <algorithm>
#include <cstring>

#include "apps/scene/scene_file_error.h"

namespace viewer {

using nlohmann::json;

namespace {

std::string listed(std::initializer_list<const char*> names) {
    std::string list;
    for (const char* name : names) list += (list.empty() ? "" : ", ") + std::string(name);
    return list;
}

}  // namespace

JsonNode::JsonNode(const json& value, std::string file, std::string where)
    : value_(value), file_(std::move(file)), where_(std::move(where)) {}

void JsonNode::fail(const std::string& what) const {
    throw SceneFileError(file_ + ": " + (where_.empty() ? "" : where_ + ": ") + what);
}

JsonNode JsonNode::child(const json& value, const std::string& step) const {
    const bool index = !step.empty() && step.front() == '[';
    return JsonNode(value, file_, where_.empty() || index ? where_ + step : where_ + "." + step);
}

std::optional<JsonNode> JsonNode::find(const char* key) const {
    expect(json::value_t::object, "an object");
    const auto found = value_.find(key);
    if (found == value_.end()) return std::nullopt;
    return child(*found, key);
}

JsonNode JsonNode::operator[](const char* key) const {
    std::optional<JsonNode> found = find(key);
    if (!found) fail(std::string("missing key '") + key + "'");
    return *found;
}

void JsonNode::expectKeys(std::initializer_list<const char*> allowed) const {
    expect(json::value_t::object, "an object");
    for (const auto& item : value_.items()) {
        const bool known = std::any_of(allowed.begin(), allowed.end(),
                                       [&item](const char* name) { return item.key() == name; });
        if (!known) fail("unknown key '" + item.key() + "' (known: " + listed(allowed) + ")");
    }
}

std::vector<JsonNode> JsonNode::elements() const {
    expect(json::value_t::array, "an array");
    std::vector<JsonNode> nodes;
    for (std::size_t i = 0; i < value_.size(); ++i)
        nodes.push_back(child(value_[i], "[" + std::to_string(i) + "]"));
    return nodes;
}

std::vector<std::pair<std::string, JsonNode>> JsonNode::members() const {
    expect(json::value_t::object, "an object");
    std::vector<std::pair<std::string, JsonNode>> nodes;
    for (const auto& item : value_.items())
        nodes.emplace_back(item.key(), child(item.value(), item.key()));
    return nodes;
}

void JsonNode::expect(json::value_t type, const char* name) const {
    // Integers and fractions are both numbers.
    const bool matches =
        type == json::value_t::number_float ? value_.is_number() : value_.type() == type;
    if (!matches) fail(std::string("expected ") + name + ", got " + value_.type_name());
}

double JsonNode::number() const {
    expect(json::value_t::number_float, "a number");
    return value_.get<double>();
}

double JsonNode::positive() const {
    const double value = number();
    if (!(value > 0.0)) fail("expected a number greater than 0, got " + value_.dump());
    return value;
}

int JsonNode::integer() const {
    const double value = number();
    if (!value_.is_number_integer()) fail("expected a whole number, got " + value_.dump());
    return static_cast<int>(value);
}

bool JsonNode::boolean() const {
    expect(json::value_t::boolean, "true or false");
    return value_.get<bool>();
}

std::string JsonNode::text() const {
    expect(json::value_t::string, "a string");
    return value_.get<std::string>();
}

Vec3 JsonNode::vec3() const {
    const std::vector<JsonNode> items = elements();
    if (items.size() != 3) fail("expected three numbers, got " + std::to_string(items.size()));
    return {items[0].number(), items[1].number(), items[2].number()};
}

Pixel JsonNode::pixel() const {
    const std::vector<JsonNode> items = elements();
    if (items.size() != 2)
        fail("expected a pixel [x, y], got " + std::to_string(items.size()) + " numbers");
    return {items[0].integer(), items[1].integer()};
}

std::vector<std::string> JsonNode::texts() const {
    std::vector<std::string> values;
    for (const JsonNode& item : elements()) values.push_back(item.text());
    return values;
}

}  // namespace viewer

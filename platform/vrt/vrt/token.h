#pragma once
// vrt::Token: an interned name (a schema, an attribute, a path element).

#include <cstddef>
#include <string>

namespace vrt {

class Token {
public:
    Token() = default;
    explicit Token(const char* text) : text_(text) {}
    explicit Token(std::string text) : text_(std::move(text)) {}

    const std::string& string() const { return text_; }
    bool operator==(const Token& other) const { return text_ == other.text_; }
    bool operator!=(const Token& other) const { return text_ != other.text_; }
    std::size_t hash() const { return std::hash<std::string>()(text_); }

private:
    std::string text_;
};

}  // namespace vrt

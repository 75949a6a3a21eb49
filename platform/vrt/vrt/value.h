#pragma once
// vrt::Value: one attribute value of any type the stage holds.

#include <string>
#include <variant>

namespace vrt {

class Value {
public:
    /// Type codes as getType answers them.
    static constexpr int kEmptyType = 0;
    static constexpr int kIntType = 11;
    static constexpr int kFloatType = 24;
    static constexpr int kDoubleType = 25;
    static constexpr int kStringType = 34;

    Value() = default;
    explicit Value(double value) : held_(value) {}
    explicit Value(float value) : held_(value) {}
    explicit Value(int value) : held_(value) {}
    explicit Value(std::string value) : held_(std::move(value)) {}

    int getType() const;
    /// The value held; the type must be the one asked for.
    template <typename T>
    const T& get() const {
        return std::get<T>(held_);
    }

private:
    std::variant<std::monostate, int, float, double, std::string> held_;
};

}  // namespace vrt

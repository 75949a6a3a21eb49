#pragma once
// What a host may send, made from a fuzzer's bytes: numbers with their odd
// values (NaN, infinities, signed zeros, the extremes), texts and location
// paths drawn mostly from the words the plugin knows, matrices that are
// singular or hold NaN, and attributes of every type and shape (null, no
// value, several values, several time samples, nested groups with the
// children the plugin reads).

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/viewer/matrix.h"

namespace fuzzing {

/// Option names the plugin's layers and their siblings know.
extern const std::vector<std::string> kOptionNames;

class FuzzedValues {
public:
    FuzzedValues(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    bool exhausted() { return bytes_.remaining_bytes() == 0; }
    bool flip() { return bytes_.ConsumeBool(); }
    template <typename T>
    T inRange(T low, T high) {
        return bytes_.ConsumeIntegralInRange<T>(low, high);
    }
    template <typename T>
    T any() {
        return bytes_.ConsumeIntegral<T>();
    }
    /// One of `choices`, which must not be empty.
    template <typename T>
    const T& pick(const std::vector<T>& choices) {
        return choices[inRange<std::size_t>(0, choices.size() - 1)];
    }
    template <typename T, std::size_t N>
    const T& pick(const std::array<T, N>& choices) {
        return choices[inRange<std::size_t>(0, N - 1)];
    }

    /// Mostly ordinary values, now and then an odd one.
    double real();
    float realFloat() { return static_cast<float>(real()); }
    /// Pixel coordinates: mostly inside a viewport of `extent`, sometimes far outside.
    std::int32_t pixel(std::int32_t extent);
    /// A word the plugin knows, or a few raw bytes.
    std::string text();
    /// A location path: below "/root" mostly, sometimes odd ("", "/", "//", dots, no slash).
    std::string path();
    /// Identity, translation, rotation with scale, singular, NaN or anything.
    sorrel::Matrix matrix();

    /// Any attribute a host may hand over, null included; groups nest up to `depth`.
    sorrel::AttrRef attribute(int depth = 2);
    /// An event group, shaped as the plugin reads events most of the time.
    sorrel::AttrRef event(std::int32_t width, std::int32_t height);
    /// A location's attributes, shaped as a light's most of the time.
    sorrel::AttrRef locationAttributes();
    /// An option's value: of the option's own type most of the time.
    sorrel::AttrRef optionValue(const std::string& option);

private:
    sorrel::AttrRef group(int depth);
    std::string childName();

    FuzzedDataProvider bytes_;
};

}  // namespace fuzzing

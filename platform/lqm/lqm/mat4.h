#pragma once
// lqm::Mat4: a 4x4 matrix held as sixteen values, row after row, so that
// element [r][c] lies at index 4r + c. Points are row vectors multiplied from
// the left (v * M): the translation stands in row 3, at indices 12, 13, 14.

#include <algorithm>
#include <array>
#include <cstddef>

namespace lqm {

template <typename T>
class Mat4 {
public:
    static constexpr std::size_t kRows = 4;
    static constexpr std::size_t kCount = kRows * kRows;

    /// The identity.
    constexpr Mat4() : values_{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1} {}

    /// Sixteen values, row after row.
    constexpr explicit Mat4(const std::array<T, kCount>& values) : values_(values) {}

    /// Copies sixteen values, row after row, from `values`.
    explicit Mat4(const T* values) { std::copy(values, values + kCount, values_.begin()); }

    /// Row `row`, so that m[r][c] reads element 4r + c.
    T* operator[](std::size_t row) { return values_.data() + row * kRows; }
    const T* operator[](std::size_t row) const { return values_.data() + row * kRows; }

    T* data() { return values_.data(); }
    const T* data() const { return values_.data(); }

    /// Element-wise exact comparison.
    bool operator==(const Mat4& other) const { return values_ == other.values_; }
    bool operator!=(const Mat4& other) const { return !(*this == other); }

private:
    std::array<T, kCount> values_;
};

}  // namespace lqm

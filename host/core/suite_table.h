#pragma once
// Host function tables by position. Every position starts as a trap that
// aborts with "unexpected call to <table> position <n>", so a call outside the
// contract shows at once; the host then fills the positions it answers.

#include <array>
#include <cstddef>
#include <string>

namespace sorrel {

constexpr std::size_t kMaxSuitePositions = 96;

class SuiteTable {
public:
    explicit SuiteTable(std::string name);

    const std::string& name() const { return name_; }
    /// Puts a function at a position.
    template <typename Fn>
    SuiteTable& set(std::size_t position, Fn* function) {
        slots_.at(position) = reinterpret_cast<void*>(function);
        return *this;
    }
    void* const* data() const { return slots_.data(); }

private:
    std::string name_;
    std::array<void*, kMaxSuitePositions> slots_{};
};

/// Reports an unexpected call and aborts; used by the traps.
[[noreturn]] void failUnexpectedCall(const char* table, std::size_t position);

}  // namespace sorrel

#pragma once
#include <cstddef>
#include <cstdint>

namespace simhost::script {

/// Bounds of one run. They only have to stop runaway scripts; real ones stay far below.
struct Limits {
    uint64_t steps = 500'000'000;         // evaluated nodes, and units of work of functions
    size_t liveBytes = size_t{512} << 20; // strings, arrays and other script values
    int callDepth = 4000;                 // nested calls of script functions
};

/// Units of one string, items of one array.
inline constexpr size_t longestString = size_t{16} << 20;
inline constexpr size_t longestArray = size_t{4} << 20;
/// Of a text that is taken as a script, in UTF-16 units.
inline constexpr size_t longestScript = size_t{8} << 20;

/// Brackets and other constructs inside each other in a script's text.
inline constexpr int maxNesting = 400;
/// Properties, indices and conversions after one operand; operands of one chain.
inline constexpr size_t maxChain = 200;
/// Nodes of one top-level expression.
inline constexpr size_t maxNodes = 2'000'000;

/// Says when the machine's stack below this object is nearly used up, so that deep recursion in a
/// script ends as an error. Windows gives a thread less stack than the native builds have.
class StackGuard {
  public:
#ifdef _WIN32
    static constexpr size_t budget = size_t{1} << 20;
#else
    static constexpr size_t budget = size_t{4} << 20;
#endif
    StackGuard() : top_(reinterpret_cast<uintptr_t>(__builtin_frame_address(0))) {}

    [[nodiscard]] bool Exhausted() const {
        const auto here = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
        return top_ > here && top_ - here > budget;
    }

  private:
    uintptr_t top_;
};

} // namespace simhost::script

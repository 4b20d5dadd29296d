#include "pipeline/random_choice.h"

#include <algorithm>
#include <cmath>

namespace brimwave {
namespace {

// The first 64 bits after the point of the golden ratio and of the square root of two, the last
// bit of the second raised: both have to be odd, so that a multiplication loses nothing.
constexpr std::uint64_t goldenRatioBits = 0x9e3779b97f4a7c15u;
constexpr std::uint64_t rootTwoBits = 0x6a09e667f3bcc909u;

/// Spreads every bit over all others: a multiplication carries it upwards, the shift that follows
/// brings the upper half down again. Each step can be undone, so no two numbers meet.
constexpr std::uint64_t Mixed(std::uint64_t x) {
    for (const std::uint64_t factor : {goldenRatioBits, rootTwoBits, goldenRatioBits}) {
        x ^= x >> 32;
        x *= factor;
    }
    return x ^ x >> 32;
}

constexpr std::uint64_t Pair(std::uint32_t upper, std::uint32_t lower) {
    return std::uint64_t{upper} << 32 | lower;
}

} // namespace

// The seed is shifted away from zero: the mixing leaves a zero as it is.
RandomKey::RandomKey(std::int32_t seed)
    : state_(Mixed(Pair(1, static_cast<std::uint32_t>(seed)))) {}

RandomKey RandomKey::With(RandomItem item, std::uint32_t number) const {
    RandomKey key = *this;
    key.state_ = Mixed(state_ ^ Mixed(Pair(static_cast<std::uint32_t>(item), number)));
    return key;
}

std::uint64_t RandomKey::Bits(RandomUse use) const {
    return Mixed(state_ ^ Mixed(Pair(static_cast<std::uint32_t>(use), 0)));
}

std::uint32_t WeightSteps(float weight) {
    if (!(weight > 0))
        return 0;
    const float steps = std::min(weight, mostWeight) * static_cast<float>(weightSteps);
    return std::max(1u, static_cast<std::uint32_t>(std::lround(steps)));
}

WeightedChoice::WeightedChoice(std::uint32_t count)
    : WeightedChoice(std::vector<std::uint32_t>(std::max(count, 1u), 1)) {}

WeightedChoice::WeightedChoice(const std::vector<std::uint32_t>& steps) {
    const bool even = std::all_of(steps.begin(), steps.end(),
                                  [&](std::uint32_t w) { return w == steps.front(); });
    std::uint64_t end = 0;
    for (const std::uint32_t weight : steps)
        ends_.push_back(end += even ? 1 : weight);
}

std::uint32_t WeightedChoice::Pick(std::uint64_t bits) const {
    // The weights' sum stays below 2^32, so the product fits and a choice is favoured by no more
    // than one in 2^32.
    const std::uint64_t place = (bits >> 32) * ends_.back() >> 32;
    const auto chosen = std::upper_bound(ends_.begin(), ends_.end(), place);
    return static_cast<std::uint32_t>(chosen - ends_.begin());
}

} // namespace brimwave

#pragma once
// Random numbers that are the same on every machine: nothing but 64-bit integer arithmetic.
#include <cstdint>
#include <vector>

namespace brimwave {

/// What a random choice is made for. The numbers are part of the random numbers: they stay.
enum class RandomItem : std::uint32_t { Object = 1, MaterialId = 2, Element = 3, Face = 4 };
enum class RandomUse : std::uint32_t { Choice = 101, Variation = 102 };

/// One random number for a seed and any set of items ("element 7 of object 12"). Keys made by
/// the same steps give the same number; any other key gives one that has nothing to do with it.
class RandomKey {
  public:
    explicit RandomKey(std::int32_t seed);
    [[nodiscard]] RandomKey With(RandomItem item, std::uint32_t number) const;
    /// Evenly spread over all 64-bit numbers.
    [[nodiscard]] std::uint64_t Bits(RandomUse use) const;

  private:
    std::uint64_t state_;
};

/// Steps in which the weight of a choice is counted, and the largest weight: more counts as this.
inline constexpr std::uint32_t weightSteps = 1024;
inline constexpr float mostWeight = 10000;

/// The weight in steps. What is no number or not above zero weighs nothing; anything above zero
/// weighs one step at least.
[[nodiscard]] std::uint32_t WeightSteps(float weight);

/// Chooses among numbered choices, evenly or by weight.
class WeightedChoice {
  public:
    /// `count` choices of the same weight; at least one.
    explicit WeightedChoice(std::uint32_t count);
    /// One weight for each of the at most 400 choices, in steps. When all are zero they count as
    /// equal. Equal weights choose what no weights choose.
    explicit WeightedChoice(const std::vector<std::uint32_t>& steps);

    [[nodiscard]] std::uint32_t Count() const { return static_cast<std::uint32_t>(ends_.size()); }
    /// The choice, 0..Count()-1, that 64 random bits fall on.
    [[nodiscard]] std::uint32_t Pick(std::uint64_t bits) const;

    friend bool operator==(const WeightedChoice&, const WeightedChoice&) = default;

  private:
    std::vector<std::uint64_t> ends_; // sum of the weights up to and with each choice
};

} // namespace brimwave

#include "pipeline/random_choice.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace brimwave {
namespace {

using ::testing::ElementsAre;

constexpr std::uint32_t elementCount = 10000;

std::uint64_t ElementBits(std::int32_t seed, std::uint32_t element, RandomUse use) {
    return RandomKey(seed).With(RandomItem::Element, element).Bits(use);
}

/// Sum of the squared distances from what is expected, in units of what chance allows.
double ChiSquare(const std::vector<int>& seen, const std::vector<double>& expected) {
    double sum = 0;
    for (size_t i = 0; i < seen.size(); ++i)
        sum += (seen[i] - expected[i]) * (seen[i] - expected[i]) / expected[i];
    return sum;
}

/// What chance exceeds once in 10,000 times, with that many independent numbers.
double ChanceLimit(double freedom) {
    const double step = 2 / (9 * freedom);
    return freedom * std::pow(1 - step + 3.719 * std::sqrt(step), 3);
}

/// Over 10,000 elements; `indexOf(element)` gives what is counted.
template <class IndexOf>
void ExpectSpread(const std::vector<double>& shares, IndexOf indexOf) {
    std::vector<int> seen(shares.size());
    std::vector<double> expected;
    for (const double share : shares)
        expected.push_back(share * elementCount);
    for (std::uint32_t element = 0; element < elementCount; ++element)
        ++seen.at(indexOf(element));
    EXPECT_LT(ChiSquare(seen, expected), ChanceLimit(static_cast<double>(shares.size()) - 1));
}

std::vector<double> Even(size_t count) {
    return std::vector<double>(count, 1.0 / static_cast<double>(count));
}

// These numbers stand in docs/vertex-colours.md: converted scenes rely on them.
TEST(RandomChoice, NumbersThatNeverChange) {
    const struct {
        std::int32_t seed;
        std::uint32_t element;
        std::uint64_t choice, variation;
    } rows[] = {
        {0, 0, 0x36d4d39c14218c60u, 0x41fb95cc26781296u},
        {0, 1, 0xc919ce3e105dac07u, 0xa69162e11b412a9du},
        {12345, 0, 0xc27108d664367fd5u, 0x47ee13c36202f56au},
        {-1, 4294967295u, 0x4fd3799ebb48a3a0u, 0xd9d8509e226e93ccu},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ElementBits(row.seed, row.element, RandomUse::Choice), row.choice);
        EXPECT_EQ(ElementBits(row.seed, row.element, RandomUse::Variation), row.variation);
    }
    const RandomKey both = RandomKey(7).With(RandomItem::Object, 12).With(RandomItem::Element, 3);
    EXPECT_EQ(both.Bits(RandomUse::Choice), 0xab9f598884e2f495u);
}

TEST(RandomChoice, SpreadsEvenlyOverTenThousandElements) {
    for (const std::int32_t seed : {0, 1, 2, -1, 12345, 1 << 30})
        for (const std::uint32_t count : {2u, 3u, 7u, 10u, 64u, 255u}) {
            SCOPED_TRACE(std::to_string(seed) + ", " + std::to_string(count));
            const WeightedChoice choice(count);
            ExpectSpread(Even(count), [&](std::uint32_t element) {
                return choice.Pick(ElementBits(seed, element, RandomUse::Choice));
            });
        }
}

// What is near in one of the numbers has nothing in common in the choices.
TEST(RandomChoice, NeighboursAreIndependent) {
    const WeightedChoice choice(8);
    const auto pick = [&](std::uint64_t bits) { return choice.Pick(bits); };
    const auto element = [&](std::int32_t seed, std::uint32_t e) {
        return pick(ElementBits(seed, e, RandomUse::Choice));
    };
    ExpectSpread(Even(64), [&](auto e) { return element(3, e) * 8 + element(3, e + 1); });
    ExpectSpread(Even(64), [&](auto e) { return element(3, e) * 8 + element(3, e ^ 4096); });
    ExpectSpread(Even(64), [&](auto e) { return element(3, e) * 8 + element(4, e); });
    ExpectSpread(Even(64), [&](auto s) {
        const auto seed = static_cast<std::int32_t>(s);
        return element(seed, 5) * 8 + element(seed + 1, 5);
    });
    ExpectSpread(Even(64), [&](auto e) {
        return element(3, e) * 8 + pick(ElementBits(3, e, RandomUse::Variation));
    });
    ExpectSpread(Even(64), [&](auto e) {
        return element(3, e) * 8 +
               pick(RandomKey(3).With(RandomItem::Face, e).Bits(RandomUse::Choice));
    });
}

TEST(RandomChoice, WeightsAreKept) {
    const WeightedChoice choice(
        {WeightSteps(1), WeightSteps(2.5f), WeightSteps(0), WeightSteps(4)});
    std::vector<int> seen(4);
    ExpectSpread({1 / 7.5, 2.5 / 7.5, 1e-300, 4 / 7.5}, [&](std::uint32_t element) {
        const std::uint32_t index = choice.Pick(ElementBits(9, element, RandomUse::Choice));
        ++seen.at(index);
        return index;
    });
    EXPECT_EQ(seen[2], 0);

    const struct {
        float weight;
        std::uint32_t steps;
    } rows[] = {
        {1, 1024}, {0.5f, 512}, {1e-9f, 1},        {0, 0},
        {-3, 0},   {NAN, 0},    {1e30f, 10240000}, {INFINITY, 10240000},
    };
    for (const auto& row : rows)
        EXPECT_EQ(WeightSteps(row.weight), row.steps) << row.weight;
}

TEST(RandomChoice, EqualWeightsAreNoWeights) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(WeightedChoice(3), WeightedChoice({500, 500, 500}));
    EXPECT_EQ(WeightedChoice(3), WeightedChoice({0, 0, 0}));
    EXPECT_EQ(WeightedChoice(0).Count(), 1u);
    EXPECT_EQ(WeightedChoice(255).Pick(most), 254u);
    EXPECT_EQ(WeightedChoice(255).Pick(0), 0u);
    const WeightedChoice heaviest(std::vector<std::uint32_t>(400, WeightSteps(mostWeight)));
    EXPECT_EQ(heaviest.Pick(most), 399u);
    const WeightedChoice lopsided({0, WeightSteps(mostWeight), 1, 0});
    EXPECT_EQ(lopsided.Pick(0), 1u);
    EXPECT_EQ(lopsided.Pick(most), 2u);
}

} // namespace
} // namespace brimwave

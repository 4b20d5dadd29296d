#pragma once
// How the stand-in numbers the classes of which no file of the real host has shown the id.
#include <cstdint>

namespace simhost {

/// Both parts of a class's id, the first in the upper half, from its display name.
template <typename Name>
[[nodiscard]] constexpr std::uint64_t HashClassName(const Name& name) {
    std::uint64_t hash = 14695981039346656037U;
    for (const auto c : name)
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 1099511628211U;
    return hash;
}

} // namespace simhost

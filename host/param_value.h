#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace brimwave {

enum class ParamKind : std::uint32_t {
    None = 0, // absent, or of a type that is not read
    Float = 1,
    Int = 2,
    Bool = 3,
    String = 4,
    Color = 5,
    Vector = 6,
};

/// A host colour; 1.0 is full intensity.
struct ColorValue {
    float r = 0, g = 0, b = 0;
};

struct VectorValue {
    float x = 0, y = 0, z = 0;
};

/// What a look-up found: only the member of its kind is set. Values are as the host stores
/// them: angles in radians, percentages as fractions, world distances in system units.
struct ParamValue {
    ParamKind kind = ParamKind::None;
    float floatValue = 0;
    std::int32_t intValue = 0;
    bool boolValue = false;
    std::wstring stringValue;
    ColorValue color;
    VectorValue vector;

    explicit operator bool() const { return kind != ParamKind::None; }

    /// The value of a whole number or a flag (1 or 0); empty for any other kind.
    [[nodiscard]] std::optional<std::int32_t> Whole() const {
        if (kind == ParamKind::Int)
            return intValue;
        if (kind == ParamKind::Bool)
            return boolValue ? 1 : 0;
        return std::nullopt;
    }

    /// The value of a number or a flag (1 or 0); empty for any other kind.
    [[nodiscard]] std::optional<float> Number() const {
        if (kind == ParamKind::Float)
            return floatValue;
        const auto whole = Whole();
        return whole ? std::optional(static_cast<float>(*whole)) : std::nullopt;
    }
};

} // namespace brimwave

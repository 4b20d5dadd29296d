#pragma once
#include "point3.h"

/// A floating colour; 1.0 is full intensity.
class Color {
  public:
    float r = 0, g = 0, b = 0;
    Color() = default;
    Color(float red, float green, float blue) : r(red), g(green), b(blue) {}
    Color(const Point3& p) : r(p.x), g(p.y), b(p.z) {}
    operator Point3() const { return {r, g, b}; }
    friend bool operator==(const Color&, const Color&) = default;
};

class AColor {
  public:
    float r = 0, g = 0, b = 0, a = 1;
    AColor() = default;
    AColor(float red, float green, float blue, float alpha = 1)
        : r(red), g(green), b(blue), a(alpha) {}
    AColor(const Point4& p) : r(p.x), g(p.y), b(p.z), a(p.w) {}
    friend bool operator==(const AColor&, const AColor&) = default;
};

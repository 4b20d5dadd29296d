#pragma once
#include "maxtypes.h"

class Point3 {
  public:
    float x = 0, y = 0, z = 0;
    Point3() = default;
    Point3(float px, float py, float pz) : x(px), y(py), z(pz) {}
    float& operator[](int i) { return (&x)[i]; }
    const float& operator[](int i) const { return (&x)[i]; }
    [[nodiscard]] Point3 operator-() const { return {-x, -y, -z}; }
    Point3& operator+=(const Point3& o) { return *this = *this + o; }
    friend Point3 operator+(const Point3& a, const Point3& b) {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend Point3 operator-(const Point3& a, const Point3& b) {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend Point3 operator*(const Point3& a, float s) { return {a.x * s, a.y * s, a.z * s}; }
    friend Point3 operator*(float s, const Point3& a) { return a * s; }
    friend Point3 operator/(const Point3& a, float s) { return {a.x / s, a.y / s, a.z / s}; }
    friend bool operator==(const Point3&, const Point3&) = default;
};

inline float DotProd(const Point3& a, const Point3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Point3 CrossProd(const Point3& a, const Point3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float Length(const Point3& v) {
    return std::sqrt(DotProd(v, v));
}
inline Point3 Normalize(const Point3& v) {
    const float length = Length(v);
    return length == 0 ? v : v / length;
}

class Point4 {
  public:
    float x = 0, y = 0, z = 0, w = 0;
    Point4() = default;
    Point4(float px, float py, float pz, float pw) : x(px), y(py), z(pz), w(pw) {}
    float& operator[](int i) { return (&x)[i]; }
    const float& operator[](int i) const { return (&x)[i]; }
    friend bool operator==(const Point4&, const Point4&) = default;
};

#pragma once
#include "maxtypes.h"

inline constexpr int UNITS_INCHES = 0;
inline constexpr int UNITS_CENTIMETERS = 4;
inline constexpr int UNITS_METERS = 5;
inline constexpr int UNITS_KILOMETERS = 6;

/// Length of one system unit in the given unit; -1 for an unknown unit.
double GetSystemUnitScale(int unit);
/// The system unit's type and how many of them make one unit of the scene.
void GetSystemUnitInfo(int* type, float* scale);

#pragma once
// What is written of each class of lights. Rows of lengths are in metres, all others as stored.
#include "package/param_table.h"

namespace brimwave {

extern const ParamTable coronaLightTable;
extern const ParamTable coronaSunTable;
extern const ParamTable vrayLightTable;
extern const ParamTable vraySunTable;
extern const ParamTable vrayIesTable;
extern const ParamTable photometricLightTable;

} // namespace brimwave

#pragma once
// What is written of each material class. class_dispatch says which class has which table.
#include "package/param_table.h"

namespace brimwave {

// material_tables.cpp
extern const ParamTable physicalMaterialTable;
extern const ParamTable pbrMaterialTable;
extern const ParamTable gltfMaterialTable;
extern const ParamTable standardMaterialTable;
extern const ParamTable blendTable;
extern const ParamTable doubleSidedTable;
extern const ParamTable topBottomTable;
extern const ParamTable shellacTable;
extern const ParamTable shellMaterialTable;
extern const ParamTable materialSwitcherTable;
extern const ParamTable materialOutputSelectorTable;
extern const ParamTable morpherTable;
extern const ParamTable xrefMaterialTable;

// corona_material_tables.cpp
extern const ParamTable coronaSkinMtlTable;
extern const ParamTable coronaLightMtlTable;
extern const ParamTable coronaRaySwitchMtlTable;
extern const ParamTable coronaBlendMtlTable;
extern const ParamTable coronaSelectMtlTable;

// vray_material_tables.cpp
extern const ParamTable vrayMtlTable;
extern const ParamTable vrayAlSurfaceMtlTable;
extern const ParamTable vrayCarPaintMtlTable;
extern const ParamTable vrayFastSss2Table;
extern const ParamTable vrayStochasticFlakesMtlTable;
extern const ParamTable vrayBlendMtlTable;
extern const ParamTable vray2SidedMtlTable;
extern const ParamTable vrayLightMtlTable;

} // namespace brimwave

#pragma once
// What is written of each texture-map class. class_dispatch says which class has which table.
#include "package/param_table.h"

namespace brimwave {

// texmap_tables.cpp
extern const ParamTable bitmapCropTable;
extern const ParamTable cellularTable;
extern const ParamTable checkerTable;
extern const ParamTable colorCorrectionTable;
extern const ParamTable colorMapTable;
extern const ParamTable gradientTable;
extern const ParamTable gradientRampTable;
extern const ParamTable maskTable;
extern const ParamTable multiTextureTable;
extern const ParamTable noiseTable;
extern const ParamTable normalBumpTable;
extern const ParamTable outputTable;
extern const ParamTable rgbMultiplyTable;
extern const ParamTable rgbTintTable;
extern const ParamTable proceduralTable;
extern const ParamTable scatterColorTable;

// corona_texmap_tables.cpp
extern const ParamTable coronaAoTable;
extern const ParamTable coronaBumpConverterTable;
extern const ParamTable coronaBumpTexTable;
extern const ParamTable coronaColorCorrectTable;
extern const ParamTable coronaColorTable;
extern const ParamTable coronaCurvatureTable;
extern const ParamTable coronaFrontBackTable;
extern const ParamTable coronaMappingRandomizerTable;
extern const ParamTable coronaMixTable;
extern const ParamTable coronaMultiMapTable;
extern const ParamTable coronaNormalTable;
extern const ParamTable coronaRoundEdgesTable;
extern const ParamTable coronaSelectTable;
extern const ParamTable coronaTileMapTable;
extern const ParamTable coronaTonemapControlTable;
extern const ParamTable coronaTriplanarTable;
extern const ParamTable coronaWireTable;

// vray_texmap_tables.cpp
extern const ParamTable vrayBitmapTable;
extern const ParamTable vrayColorTable;
extern const ParamTable vrayCompTexTable;
extern const ParamTable vrayDirtTable;
extern const ParamTable vrayEdgesTexTable;
extern const ParamTable vrayMultiSubTexTable;
extern const ParamTable vrayNormalMapTable;

} // namespace brimwave

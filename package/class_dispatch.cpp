#include "package/class_dispatch.h"

#include "host/text.h"
#include "package/bitmap.h"
#include "package/composite.h"
#include "package/corona_material.h"
#include "package/falloff.h"
#include "package/map_output.h"
#include "package/material_tables.h"
#include "package/standard_material.h"
#include "package/texmap_tables.h"

namespace brimwave {

using ClassWriter = void (*)(PackageContext&, JsonMembers&, MtlBase&);

/// What is written for a class: the members of a writer, of a table, or of both in this order.
struct ClassRow {
    std::wstring_view key;
    ClassWriter writer;
    const ParamTable* table;
};

namespace {

void AppendCorona(PackageContext& package, JsonMembers& members, MtlBase& object) {
    AppendCoronaMaterial(package, members, object);
}

void AppendStandard(PackageContext& package, JsonMembers& members, MtlBase& object) {
    if (auto* const material = dynamic_cast<Mtl*>(&object))
        AppendStandardMaterial(package, members, *material);
}

// Classes by their whole name, in lower case.
const ClassRow exactRows[] = {
    {L"coronabitmap", AppendBitmap, nullptr},
    {L"coronamtl", AppendCorona, nullptr},
    {L"coronalayeredmtl", nullptr, nullptr},
    {L"coronamixtex", nullptr, &coronaMixTable},
    {L"coronablendmtl", nullptr, &coronaBlendMtlTable},
    {L"coronanormal", nullptr, &coronaNormalTable},
    {L"coronanormaltex", nullptr, &coronaNormalTable},
    {L"coronabumptex", nullptr, &coronaBumpTexTable},
    {L"coronacolortex", nullptr, &coronaColorTable},
    {L"coronacolor", nullptr, &coronaColorTable},
    {L"coronalightmtl", nullptr, &coronaLightMtlTable},
    {L"coronaskinmtl", nullptr, &coronaSkinMtlTable},
    {L"coronarayswitchmtl", nullptr, &coronaRaySwitchMtlTable},
    {L"coronaaotexmap", nullptr, &coronaAoTable},
    {L"coronacurvature", nullptr, &coronaCurvatureTable},
    {L"coronamappingrandomizer", nullptr, &coronaMappingRandomizerTable},
    {L"corona mapping randomizer", nullptr, &coronaMappingRandomizerTable},
    {L"vraymtl", nullptr, &vrayMtlTable},
    {L"vrayhdri", AppendBitmap, &vrayBitmapTable},
    {L"vraybitmap", AppendBitmap, &vrayBitmapTable},
    {L"vraynormalmap", nullptr, &vrayNormalMapTable},
    {L"normal bump", nullptr, &normalBumpTable},
    {L"normal_bump", nullptr, &normalBumpTable},
    {L"vraycolor", nullptr, &vrayColorTable},
    {L"vraydirt", nullptr, &vrayDirtTable},
    {L"vray2sidedmtl", nullptr, &vray2SidedMtlTable},
    {L"vraylightmtl", nullptr, &vrayLightMtlTable},
    {L"vrayblendmtl", nullptr, &vrayBlendMtlTable},
    {L"vraycarpaintmtl", nullptr, &vrayCarPaintMtlTable},
    {L"vrayfastsss2", nullptr, &vrayFastSss2Table},
    {L"vraymultisubtex", nullptr, &vrayMultiSubTexTable},
    {L"vraycomptex", nullptr, &vrayCompTexTable},
    {L"vrayedgestex", nullptr, &vrayEdgesTexTable},
    {L"vraystochasticflakesmtl", nullptr, &vrayStochasticFlakesMtlTable},
    {L"vrayalsurfacemtl", nullptr, &vrayAlSurfaceMtlTable},
    {L"vray alsurface mtl", nullptr, &vrayAlSurfaceMtlTable},
    {L"coronafrontback", nullptr, &coronaFrontBackTable},
    {L"falloff", AppendFalloff, nullptr},
    {L"noise", nullptr, &noiseTable},
    {L"output", nullptr, &outputTable},
    {L"gradient", nullptr, &gradientTable},
    {L"gradient_ramp", AppendGradientRamp, nullptr},
    {L"gradientramp", AppendGradientRamp, nullptr},
    {L"gradient ramp", AppendGradientRamp, nullptr},
    {L"bitmaptexture", AppendBitmap, &bitmapCropTable},
    {L"bitmap", AppendBitmap, &bitmapCropTable},
    {L"color_correction", nullptr, &colorCorrectionTable},
    {L"color correction", nullptr, &colorCorrectionTable},
    {L"cellular", nullptr, &cellularTable},
    {L"rgb_multiply", nullptr, &rgbMultiplyTable},
    {L"rgb multiply", nullptr, &rgbMultiplyTable},
    {L"color_map", nullptr, &colorMapTable},
    {L"blend", nullptr, &blendTable},
    {L"multitexture", nullptr, &multiTextureTable},
    {L"checker", nullptr, &checkerTable},
    {L"mask", nullptr, &maskTable},
    {L"rgb tint", nullptr, &rgbTintTable},
    {L"rgb_tint", nullptr, &rgbTintTable},
    {L"color map", nullptr, &colorMapTable},
    {L"colormap", nullptr, &colorMapTable},
    {L"coronawire", nullptr, &coronaWireTable},
    {L"corona wire", nullptr, &coronaWireTable},
    {L"coronatilemap", nullptr, &coronaTileMapTable},
    {L"corona tilemap", nullptr, &coronaTileMapTable},
    {L"corona tile map", nullptr, &coronaTileMapTable},
    {L"splat", nullptr, &proceduralTable},
    {L"speckle", nullptr, &proceduralTable},
    {L"smoke", nullptr, &proceduralTable},
    {L"dent", nullptr, &proceduralTable},
    {L"marble", nullptr, &proceduralTable},
    {L"perlin marble", nullptr, &proceduralTable},
    {L"perlin_marble", nullptr, &proceduralTable},
    {L"stucco", nullptr, &proceduralTable},
    {L"shellac", nullptr, &shellacTable},
    {L"shell_material", nullptr, &shellMaterialTable},
    {L"shell material", nullptr, &shellMaterialTable},
    {L"material_switcher", nullptr, &materialSwitcherTable},
    {L"material switcher", nullptr, &materialSwitcherTable},
    {L"xref", nullptr, &xrefMaterialTable},
    {L"xref_material", nullptr, &xrefMaterialTable},
    {L"xref material", nullptr, &xrefMaterialTable},
    {L"material_output_selector", nullptr, &materialOutputSelectorTable},
    {L"material output selector", nullptr, &materialOutputSelectorTable},
    {L"map_to_material_conversion", nullptr, nullptr},
    {L"map to material conversion", nullptr, nullptr},
    {L"morpher", nullptr, &morpherTable},
    {L"morphermaterial", nullptr, &morpherTable},
    {L"morpher material", nullptr, &morpherTable},
    {L"doublesided", nullptr, &doubleSidedTable},
    {L"double sided", nullptr, &doubleSidedTable},
    {L"topbottom", nullptr, &topBottomTable},
    {L"top/bottom", nullptr, &topBottomTable},
    {L"top bottom", nullptr, &topBottomTable},
    {L"compositematerial", AppendCompositeMaterial, nullptr},
    {L"composite material", AppendCompositeMaterial, nullptr},
    {L"coronaselectmtl", nullptr, &coronaSelectMtlTable},
    {L"corona select mtl", nullptr, &coronaSelectMtlTable},
    {L"coronaselect", nullptr, &coronaSelectTable},
    {L"corona select", nullptr, &coronaSelectTable},
    {L"coronatonemapcontrol", nullptr, &coronaTonemapControlTable},
    {L"corona tonemap control", nullptr, &coronaTonemapControlTable},
    {L"coronabumpconverter", nullptr, &coronaBumpConverterTable},
    {L"corona bump converter", nullptr, &coronaBumpConverterTable},
    {L"standard (legacy)", AppendStandard, nullptr},
    {L"standard", AppendStandard, nullptr},
    {L"standardmaterial", AppendStandard, nullptr},
    {L"standard material", AppendStandard, nullptr},
    {L"physical material", nullptr, &physicalMaterialTable},
    {L"physicalmaterial", nullptr, &physicalMaterialTable},
};

// All others by a part of their name; the first that is found counts.
const ClassRow partRows[] = {
    {L"forest color", nullptr, &scatterColorTable},
    {L"forest_color", nullptr, &scatterColorTable},
    {L"railclone color", nullptr, &scatterColorTable},
    {L"railclone_color", nullptr, &scatterColorTable},
    {L"pbr", nullptr, &pbrMaterialTable},
    {L"gltf", nullptr, &gltfMaterialTable},
    {L"legacy", AppendCorona, nullptr},
    {L"physical", AppendCorona, nullptr},
    {L"lightmtl", nullptr, &coronaLightMtlTable},
    {L"skinmtl", nullptr, &coronaSkinMtlTable},
    {L"ao", nullptr, &coronaAoTable},
    {L"composite", AppendCompositeMap, nullptr},
    {L"coronacolorcorrect", nullptr, &coronaColorCorrectTable},
    {L"coronamix", nullptr, &coronaMixTable},
    {L"coronacolor", nullptr, &coronaColorTable},
    {L"rgb_multiply", nullptr, &rgbMultiplyTable},
    {L"rgb multiply", nullptr, &rgbMultiplyTable},
    {L"color_map", nullptr, &colorMapTable},
    {L"multimap", nullptr, &coronaMultiMapTable},
    {L"roundedge", nullptr, &coronaRoundEdgesTable},
    {L"triplanar", nullptr, &coronaTriplanarTable},
};

const ClassRow* FindByPart(std::wstring_view key) {
    for (const ClassRow& row : partRows)
        if (key.find(row.key) != std::wstring_view::npos)
            return &row;
    return nullptr;
}

/// The row of a class; null when it has none.
const ClassRow* FindRow(const std::wstring& key) {
    static const auto exact = [] {
        std::unordered_map<std::wstring_view, const ClassRow*> rows;
        for (const ClassRow& row : exactRows)
            rows.emplace(row.key, &row);
        return rows;
    }();
    const auto found = exact.find(key);
    return found == exact.end() ? FindByPart(key) : found->second;
}

const ClassRow* RowOf(PackageContext& package, std::wstring_view type) {
    const auto known = package.classRows.find(type);
    if (known != package.classRows.end())
        return known->second;
    return package.classRows.emplace(type, FindRow(ToLowerW(type))).first->second;
}

struct TypeName {
    std::wstring_view className;
    std::wstring_view type;
};

constexpr TypeName typeNames[] = {
    {L"Bitmap", L"Bitmaptexture"},
    {L"Falloff", L"falloff"},
    {L"Color Correction", L"Color_Correction"},
    {L"RGB Multiply", L"RGB_Multiply"},
    {L"Standard (Legacy)", L"Standardmaterial"},
    {L"Shell Material", L"Shell_Material"},
    {L"Material Switcher", L"Material_Switcher"},
    {L"XRef Material", L"XRef_Material"},
    {L"Material Output Selector", L"Material_Output_Selector"},
    {L"Map to Material Conversion", L"Map_to_Material_Conversion"},
    {L"Double Sided", L"DoubleSided"},
    {L"Top/Bottom", L"TopBottom"},
    {L"Top Bottom", L"TopBottom"},
    {L"Output", L"output"},
};

} // namespace

std::wstring_view NormaliseClassName(std::wstring_view className, bool isMaterial) {
    if (className == L"Composite")
        return isMaterial ? L"compositematerial" : L"CompositeTexturemap";
    for (const TypeName& name : typeNames)
        if (className == name.className)
            return name.type;
    return className;
}

void WriteClassParams(PackageContext& package, JsonMembers& members, MtlBase& object,
                      std::wstring_view type) {
    if (const ClassRow* const row = RowOf(package, type)) {
        if (row->writer)
            row->writer(package, members, object);
        if (row->table)
            package.params.AppendTable(members, &object, *row->table);
    }
    if (object.SuperClassID() == TEXMAP_CLASS_ID)
        AppendMapOutput(package, members, object);
}

} // namespace brimwave

#include "package/texmap_tables.h"

namespace brimwave {
namespace {

// The host's own texture-map classes and those of scatterers. Rows are written in their order, and
// every spelling that the object has is written.

// Bitmap: the cropping
constexpr ParamRow bitmapCropRows[] = {
    {L"cropPlace", L"crop_place"}, {L"clipu", L"crop_u"}, {L"clipv", L"crop_v"},
    {L"clipw", L"crop_w"},         {L"cliph", L"crop_h"},
};

// Cellular
constexpr ParamRow cellularRows[] = {
    {L"cellColor", L"cell_color"},
    {L"cellVariation", L"cell_variation"},
    {L"divisionColor1", L"division_color1"},
    {L"divisionColor2", L"division_color2"},
    {L"cellType", L"cell_type"},
    {L"fractal", L"fractal"},
    {L"size", L"size"},
    {L"spread", L"spread"},
    {L"iterations", L"iterations"},
    {L"adaptive", L"adaptive"},
    {L"bumpSmoothing", L"bump_smoothing"},
    {L"roughness", L"roughness"},
    {L"lowThresh", L"threshold_low"},
    {L"midThresh", L"threshold_mid"},
    {L"highThresh", L"threshold_high"},
};

// Checker
constexpr ParamRow checkerRows[] = {
    {L"color1", L"color1"},
    {L"color2", L"color2"},
    {L"Soften", L"soften"},
    {L"map1Enabled", L"map1_enabled"},
    {L"map2Enabled", L"map2_enabled"},
};

// Color Correction
constexpr ParamRow colorCorrectionRows[] = {
    {L"color", L"color"},
    {L"rewireMode", L"rewire_mode"},
    {L"rewireR", L"rewire_r"},
    {L"rewireG", L"rewire_g"},
    {L"rewireB", L"rewire_b"},
    {L"rewireA", L"rewire_a"},
    {L"hueShift", L"hue_shift"},
    {L"saturation", L"saturation"},
    {L"tint", L"hue_tint"},
    {L"tintStrength", L"hue_tint_strength"},
    {L"hueTint", L"hue_tint"},
    {L"hueTintStrength", L"hue_tint_strength"},
    {L"lightnessMode", L"lightness_mode"},
    {L"enableR", L"enable_r"},
    {L"enableG", L"enable_g"},
    {L"enableB", L"enable_b"},
    {L"brightness", L"brightness"},
    {L"contrast", L"contrast"},
    {L"gainRGB", L"gain_rgb"},
    {L"gainR", L"gain_r"},
    {L"gainG", L"gain_g"},
    {L"gainB", L"gain_b"},
    {L"gammaRGB", L"gamma_rgb"},
    {L"gammaR", L"gamma_r"},
    {L"gammaG", L"gamma_g"},
    {L"gammaB", L"gamma_b"},
    {L"pivotRGB", L"pivot_rgb"},
    {L"pivotR", L"pivot_r"},
    {L"pivotG", L"pivot_g"},
    {L"pivotB", L"pivot_b"},
    {L"liftRGB", L"lift_rgb"},
    {L"liftR", L"lift_r"},
    {L"liftG", L"lift_g"},
    {L"liftB", L"lift_b"},
    {L"printerLights", L"printer_lights"},
    {L"exposureMode", L"exposure_mode"},
};

// Color Map
constexpr ParamRow colorMapRows[] = {
    {L"solidcolor", L"solid_color"},
    {L"color", L"solid_color"},
    {L"mapEnabled", L"map_enabled"},
    {L"gamma", L"gamma"},
    {L"gain", L"gain"},
    {L"reverseGamma", L"reverse_gamma"},
};

// Gradient
constexpr ParamRow gradientRows[] = {
    {L"gradientType", L"gradient_type"},
    {L"color1", L"color1"},
    {L"color2", L"color2"},
    {L"color3", L"color3"},
    {L"color2Pos", L"color2_pos"},
    {L"noiseAmount", L"noise_amount"},
    {L"noiseSize", L"noise_size"},
};

// Gradient Ramp
constexpr ParamRow gradientRampRows[] = {
    {L"Gradient_Type", L"gradient_type"},
    {L"gradientType", L"gradient_type"},
    {L"Noise_Type", L"noise_type"},
    {L"amount", L"noise_amount"},
    {L"size", L"noise_size"},
    {L"phase", L"noise_phase"},
    {L"levels", L"noise_levels"},
};

// Mask
constexpr ParamRow maskRows[] = {
    {L"mapEnabled", L"map_enabled"},
    {L"maskEnabled", L"mask_enabled"},
    {L"maskInverted", L"mask_inverted"},
};

// MultiTexture
constexpr ParamRow multiTextureRows[] = {
    {L"rnd_by", L"rnd_by"},
    {L"seed", L"seed"},
};

// Noise
constexpr ParamRow noiseRows[] = {
    {L"type", L"noise_type"},
    {L"size", L"size"},
    {L"phase", L"phase"},
    {L"levels", L"levels"},
    {L"lowThreshold", L"low_threshold"},
    {L"highThreshold", L"high_threshold"},
    {L"color1", L"color1"},
    {L"color2", L"color2"},
};

// Normal Bump
constexpr ParamRow normalBumpRows[] = {
    {L"mult_spin", L"normal_multiplier"},
    {L"bump_spin", L"bump_multiplier"},
    {L"flipred", L"flip_red"},
    {L"flipgreen", L"flip_green"},
    {L"swap_rg", L"swap_rg"},
    {L"method", L"normal_method"},
};

// Output
constexpr ParamRow outputRows[] = {
    {L"map1Enabled", L"map_enabled"},
};

// RGB Multiply
constexpr ParamRow rgbMultiplyRows[] = {
    {L"color1", L"color1_value"},
    {L"color2", L"color2_value"},
    {L"map1Enabled", L"map1_enabled"},
    {L"map2Enabled", L"map2_enabled"},
};

// RGB Tint
constexpr ParamRow rgbTintRows[] = {
    {L"red", L"tint_red"},
    {L"green", L"tint_green"},
    {L"blue", L"tint_blue"},
    {L"map1Enabled", L"map1_enabled"},
};

// Splat, Speckle, Smoke, Dent, Marble, Perlin Marble and Stucco
constexpr ParamRow proceduralRows[] = {
    {L"color1", L"color1"},
    {L"color2", L"color2"},
    {L"map1on", L"map1_enabled"},
    {L"map2on", L"map2_enabled"},
    {L"map1Enabled", L"map1_enabled"},
    {L"map2Enabled", L"map2_enabled"},
    {L"size", L"size"},
    {L"iterations", L"iterations"},
    {L"threshold", L"threshold"},
    {L"thickness", L"thickness"},
    {L"strength", L"strength"},
    {L"exponent", L"exponent"},
    {L"phase", L"phase"},
    {L"width", L"width"},
    {L"level", L"level"},
    {L"saturation1", L"saturation1"},
    {L"saturation2", L"saturation2"},
};

// Forest Color and RailClone Color
constexpr ParamRow scatterColorRows[] = {
    {L"mapbase", L"map_base_on"},    {L"colorbase", L"color_base"},
    {L"mapidmode", L"map_id_mode"},  {L"tintvariation", L"tint_variation"},
    {L"tintcolor1", L"tint_color1"}, {L"tintcolor2", L"tint_color2"},
    {L"tintmode", L"tint_mode"},     {L"override", L"override"},
};

} // namespace

const ParamTable bitmapCropTable = bitmapCropRows;
const ParamTable cellularTable = cellularRows;
const ParamTable checkerTable = checkerRows;
const ParamTable colorCorrectionTable = colorCorrectionRows;
const ParamTable colorMapTable = colorMapRows;
const ParamTable gradientTable = gradientRows;
const ParamTable gradientRampTable = gradientRampRows;
const ParamTable maskTable = maskRows;
const ParamTable multiTextureTable = multiTextureRows;
const ParamTable noiseTable = noiseRows;
const ParamTable normalBumpTable = normalBumpRows;
const ParamTable outputTable = outputRows;
const ParamTable rgbMultiplyTable = rgbMultiplyRows;
const ParamTable rgbTintTable = rgbTintRows;
const ParamTable proceduralTable = proceduralRows;
const ParamTable scatterColorTable = scatterColorRows;

} // namespace brimwave

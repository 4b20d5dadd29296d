#pragma once
// Basic types and identifiers of the host's SDK.
#include <windows.h>

#include <cfloat>
#include <cmath>

using MCHAR = wchar_t;
#ifndef _T
#define _T(text) L##text
#endif

using TimeValue = int;
using SClass_ID = ULONG;
using BlockID = short;
using ParamID = short;
using AnimHandle = UINT_PTR;
using MtlID = WORD;
using RefResult = int;

inline constexpr TimeValue TIME_NegInfinity = static_cast<TimeValue>(0x80000000u);
inline constexpr TimeValue TIME_PosInfinity = 0x7fffffff;

#define MAX_RELEASE 26000
#define MAX_VERSION_MAJOR 26
#define MAX_API_NUM 64
#define MAX_SDK_REV 0
#define VERSION_3DSMAX ((static_cast<ULONG>(MAX_RELEASE) << 16) + (MAX_API_NUM << 8) + MAX_SDK_REV)

class Class_ID {
  public:
    constexpr Class_ID() = default;
    constexpr Class_ID(ULONG partA, ULONG partB) : a_(partA), b_(partB) {}
    [[nodiscard]] constexpr ULONG PartA() const { return a_; }
    [[nodiscard]] constexpr ULONG PartB() const { return b_; }
    friend constexpr bool operator==(const Class_ID&, const Class_ID&) = default;

  private:
    ULONG a_ = 0xffffffffu;
    ULONG b_ = 0xffffffffu;
};

// Super classes.
inline constexpr SClass_ID BASENODE_CLASS_ID = 0x1;
inline constexpr SClass_ID GEN_DERIVOB_CLASS_ID = 0x2;
inline constexpr SClass_ID WSM_DERIVOB_CLASS_ID = 0x4;
inline constexpr SClass_ID PARAMETER_BLOCK2_CLASS_ID = 0x82;
inline constexpr SClass_ID GEOMOBJECT_CLASS_ID = 0x10;
inline constexpr SClass_ID CAMERA_CLASS_ID = 0x20;
inline constexpr SClass_ID LIGHT_CLASS_ID = 0x30;
inline constexpr SClass_ID SHAPE_CLASS_ID = 0x40;
inline constexpr SClass_ID HELPER_CLASS_ID = 0x50;
inline constexpr SClass_ID SYSTEM_CLASS_ID = 0x60;
inline constexpr SClass_ID REF_TARGET_CLASS_ID = 0x200;
inline constexpr SClass_ID OSM_CLASS_ID = 0x810;
inline constexpr SClass_ID WSM_CLASS_ID = 0x820;
inline constexpr SClass_ID WSM_OBJECT_CLASS_ID = 0x830;
inline constexpr SClass_ID MATERIAL_CLASS_ID = 0xc00;
inline constexpr SClass_ID TEXMAP_CLASS_ID = 0xc10;
inline constexpr SClass_ID UVGEN_CLASS_ID = 0xc20;
inline constexpr SClass_ID TEXOUTPUT_CLASS_ID = 0xc40;
inline constexpr SClass_ID RENDERER_CLASS_ID = 0xf00;
inline constexpr SClass_ID UTILITY_CLASS_ID = 0x1020;

// Stock class ids, first halves (second half 0).
inline constexpr ULONG TRIOBJ_CLASS_ID = 0x0009;
inline constexpr ULONG EDITTRIOBJ_CLASS_ID = 0xe44f10b3;
inline constexpr ULONG BMTEX_CLASS_ID = 0x240;
inline constexpr Class_ID triObjectClassID{TRIOBJ_CLASS_ID, 0};

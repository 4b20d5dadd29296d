#include "package/bitmap.h"

#include "host/bitmap_file.h"
#include "host/paths.h"
#include "package/classes/class_lists.h"

#include <stdmat.h>

namespace brimwave {
namespace {

using namespace std::literals;

constexpr float degreesPerRadian = 57.295776f;

constexpr ParamRow channelRows[] = {{L"uvwChannel", L"uvw_channel"}};

/// Where a bitmap's image lies on its surface.
struct Placement {
    std::optional<VectorValue> scale, offset;
    std::optional<bool> realWorldScale;
    std::optional<int> channel;
    std::optional<float> angle; // radians
};

/// Where the classes keep what the placement is made of.
enum Source { Scale, Offset, RealWorldScale, Angle };
constexpr ParamRow sourceRows[] = {{L"uvwScale"}, {L"uvwOffset"}, {L"realWorldScale"}, {L"wAngle"}};

void AppendPath(PackageContext& package, JsonMembers& members, MtlBase& map) {
    const auto stored = FindBitmapPath(package.params, map);
    if (!stored)
        return;
    members.AddString(L"filepath"sv, FileNameOf(*stored));
    if (const auto resolved = package.assets.Resolve(*stored, AssetKind::Bitmap))
        members.AddString(L"filepath_abs"sv, *resolved);
}

Placement ReadPlacementParams(ParamReader& params, MtlBase& map) {
    const auto sources = params.FindParamValues(&map, sourceRows);
    Placement placement;
    if (sources[Scale].kind == ParamKind::Vector)
        placement.scale = sources[Scale].vector;
    if (sources[Offset].kind == ParamKind::Vector)
        placement.offset = sources[Offset].vector;
    if (sources[RealWorldScale].kind == ParamKind::Bool)
        placement.realWorldScale = sources[RealWorldScale].boolValue;
    if (sources[Angle].kind == ParamKind::Float)
        placement.angle = sources[Angle].floatValue;
    return placement;
}

Placement ReadUvGen(StdUVGen& uv, TimeValue time) {
    Placement placement;
    placement.scale = VectorValue{uv.GetUScl(time), uv.GetVScl(time), 1};
    placement.offset = VectorValue{uv.GetUOffs(time), uv.GetVOffs(time), 0};
    placement.realWorldScale = uv.GetUseRealWorldScale() != FALSE;
    placement.channel = uv.GetMapChannel();
    placement.angle = uv.GetWAng(time);
    return placement;
}

Placement ReadPlacement(PackageContext& package, MtlBase& map) {
    const Placement placement = ReadPlacementParams(package.params, map);
    BitmapTex* const bitmap = placement.scale ? nullptr : AsHostBitmap(map);
    StdUVGen* const uv = bitmap ? bitmap->GetUVGen() : nullptr;
    return uv ? ReadUvGen(*uv, package.Time()) : placement;
}

void AppendPlacement(PackageContext& package, JsonMembers& members, MtlBase& map) {
    const Placement placement = ReadPlacement(package, map);
    if (placement.scale) {
        members.AddFloat(L"tiling_u"sv, placement.scale->x);
        members.AddFloat(L"tiling_v"sv, placement.scale->y);
    }
    if (placement.realWorldScale)
        members.AddBool(L"real_world_scale"sv, *placement.realWorldScale);
    if (placement.realWorldScale.value_or(false) && placement.scale) {
        members.AddFloat(L"real_world_width_mm"sv, placement.scale->x);
        members.AddFloat(L"real_world_height_mm"sv, placement.scale->y);
    }
    if (placement.offset) {
        members.AddFloat(L"offset_u"sv, placement.offset->x);
        members.AddFloat(L"offset_v"sv, placement.offset->y);
    }
    if (placement.channel)
        members.AddInt(L"uvw_channel"sv, *placement.channel);
    else
        package.params.AppendTable(members, &map, channelRows);
    if (placement.angle)
        members.AddFloat(L"rotate_w"sv, *placement.angle * degreesPerRadian);
}

} // namespace

void AppendBitmap(PackageContext& package, JsonMembers& members, MtlBase& map, const ClassEntry&) {
    AppendPath(package, members, map);
    AppendPlacement(package, members, map);
    package.params.AppendTable(members, &map, BitmapImage().rows);
}

} // namespace brimwave

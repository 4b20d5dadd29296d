#include "package/classes/class_lists.h"

namespace brimwave {
namespace {

ClassFamily Alone(const ClassEntry& entry) {
    return {entry.name, ClassKind::Other, {&entry, 1}};
}

} // namespace

std::span<const ClassFamily> ClassFamilies() {
    static const ClassFamily families[] = {
        {L"Materials of the host", ClassKind::Material, HostMaterials()},
        {L"Materials of Corona", ClassKind::Material, CoronaMaterials()},
        {L"Materials of V-Ray", ClassKind::Material, VRayMaterials()},
        Alone(BitmapImage()),
        {L"Maps of the host and of scatterers", ClassKind::Map, HostMaps()},
        {L"Maps of Corona", ClassKind::Map, CoronaMaps()},
        {L"Maps of V-Ray", ClassKind::Map, VRayMaps()},
        Alone(MapOutput()),
        {L"Lights", ClassKind::Other, Lights()},
        Alone(CameraLens()),
        Alone(CoronaDisplacement()),
        Alone(VRayDisplacement()),
    };
    return families;
}

} // namespace brimwave

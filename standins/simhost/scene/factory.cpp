#include "simhost/scene/factory.h"

#include "simhost/classes/catalogue.h"
#include "simhost/scene/materials.h"
#include "simhost/scene/objects.h"

namespace simhost {

namespace {

std::unique_ptr<ReferenceTarget> MakeBare(const ClassPtr& info) {
    switch (info->kind) {
    case MATERIAL_CLASS_ID:
        if (info->behaviour == L"multi")
            return std::make_unique<SceneMultiMtl>(info);
        return std::make_unique<SceneMaterial>(info);
    case TEXMAP_CLASS_ID:
        if (info->behaviour == L"bitmap")
            return std::make_unique<SceneBitmapTex>(info);
        return std::make_unique<SceneTexmap>(info);
    case UVGEN_CLASS_ID:
        if (info->behaviour == L"uvgen")
            return std::make_unique<SceneUVGen>(info);
        break;
    case TEXOUTPUT_CLASS_ID:
        return std::make_unique<SceneTextureOutput>(info);
    case GEOMOBJECT_CLASS_ID:
        if (info->behaviour == L"mesh")
            return std::make_unique<SceneMesh>(info);
        return std::make_unique<SceneGeometry>(info);
    case SHAPE_CLASS_ID:
        return std::make_unique<SceneShape>(info);
    case LIGHT_CLASS_ID:
        return std::make_unique<SceneLight>(info);
    case CAMERA_CLASS_ID:
        return std::make_unique<SceneCamera>(info);
    case HELPER_CLASS_ID:
        return std::make_unique<SceneHelper>(info);
    case OSM_CLASS_ID:
    case WSM_CLASS_ID:
        return std::make_unique<SceneModifier>(info);
    default:
        break;
    }
    return std::make_unique<SceneReference>(info);
}

} // namespace

std::unique_ptr<ReferenceTarget> MakeThing(const ClassPtr& info) {
    auto thing = MakeBare(info);
    Entity* entity = EntityOf(thing.get());
    entity->name = info->name;
    for (const SubObjectSpec& sub : info->subObjects)
        if (const ClassPtr subClass = FindSubObjectClass(sub.className))
            entity->SetSubObject(sub.role, MakeThing(subClass));
    return thing;
}

void CopySubObjects(const Entity& source, Entity& target) {
    for (int i = 0; i < source.NumSubObjects(); ++i) {
        const std::wstring& role = source.Class().subObjects[static_cast<size_t>(i)].role;
        const Entity* held = EntityOf(source.SubObject(i));
        if (!held) {
            target.SetSubObject(role, nullptr);
            continue;
        }
        auto copy = MakeBare(held->ClassShared());
        EntityOf(copy.get())->CopyFrom(*held);
        CopySubObjects(*held, *EntityOf(copy.get()));
        target.SetSubObject(role, std::move(copy));
    }
}

} // namespace simhost

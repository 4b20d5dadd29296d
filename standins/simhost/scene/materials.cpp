#include "simhost/scene/materials.h"

namespace simhost {

void SceneMultiMtl::SetNumSubMtls(int count) {
    for (const wchar_t* list : {L"materialList", L"names", L"materialIDList", L"mapEnabled"}) {
        const ParamPlace place = FindParam(list);
        if (!place.Known())
            continue;
        const auto& block = Blocks()[static_cast<size_t>(place.block)];
        Table table = std::get<Table>(block->Value(place.index));
        const bool ids = place.index == FindParam(L"materialIDList").index;
        const bool flags = place.index == FindParam(L"mapEnabled").index;
        while (static_cast<int>(table.size()) < count) {
            if (ids)
                table.emplace_back(static_cast<int>(table.size()));
            else if (flags)
                table.emplace_back(1);
            else
                table.push_back(ZeroOf(TypeOf(place)));
        }
        table.resize(static_cast<size_t>(count));
        block->Put(place.index, std::move(table));
    }
}

const MCHAR* SceneBitmapTex::GetMapName() {
    const Text* path = String(L"fileName");
    return faults.Give(Call::GetMapName, path && *path ? (*path)->c_str() : L"");
}

void SceneBitmapTex::SetMapName(const MCHAR* mapName) {
    const ParamPlace place = FindParam(L"fileName");
    if (place.Known())
        Set(place, Scalar(Text(mapName ? mapName : L"")));
}

const MaxSDK::AssetManagement::AssetUser& SceneBitmapTex::GetMap() {
    faults.Check(Call::GetMap);
    const Text* path = String(L"fileName");
    asset_ = {MSTR(path && *path ? (*path)->c_str() : L""), MaxSDK::AssetManagement::kBitmapAsset};
    return asset_;
}

StdUVGen* SceneBitmapTex::GetUVGen() {
    faults.Check(Call::GetUVGen);
    return dynamic_cast<StdUVGen*>(SubObject(L"uvgen"));
}

TextureOutput* SceneBitmapTex::GetTexout() {
    faults.Check(Call::GetTexout);
    return dynamic_cast<TextureOutput*>(SubObject(L"output"));
}

int SceneUVGen::GetTextureTiling() {
    return (Int(L"U_Tile", 1) ? U_WRAP : 0) | (Int(L"V_Tile", 1) ? V_WRAP : 0) |
           (Int(L"U_Mirror") ? U_MIRROR : 0) | (Int(L"V_Mirror") ? V_MIRROR : 0);
}

} // namespace simhost

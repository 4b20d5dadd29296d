#include "sceneconv/materials.h"

#include "sceneconv/host_params.h"

namespace sceneconv {

Json Materials::OfNode(const SourceNode& node) {
    if (node.materials.empty())
        return nullptr;
    if (node.materials.size() == 1)
        return One(node.materials.front());
    Json subs = Json::array();
    for (const MaterialSource& source : node.materials)
        subs.push_back(One(source));
    const auto [place, isNew] = multis_.try_emplace(subs.dump());
    if (isNew) {
        Json ids = Json::array();
        for (std::size_t i = 0; i < subs.size(); ++i)
            ids.push_back(i);
        // The source files know the materials of the faces, but no name for them together.
        const std::string name = node.name + " materials";
        place->second = Add(name, {{"class", "Multi/Sub-Object"},
                                   {"name", ToUtf8(name)},
                                   {"sub_materials", std::move(subs)},
                                   {"sub_material_ids", std::move(ids)}});
    }
    return place->second;
}

Json Materials::OfFbx(const FbxObject& object) {
    return object.kind == "Material" ? One({&object, -1}) : maps_.FromFbx(object);
}

Json Materials::One(const MaterialSource& source) {
    if (!source.fbx && source.importedIndex < 0)
        return nullptr;
    // An FBX material is the same one whether or not a mesh piece showed the library's view.
    const MaterialSource key{source.fbx, source.fbx ? -1 : source.importedIndex};
    if (const auto known = known_.find(key); known != known_.end())
        return known->second;
    const std::optional<HostClass> hostClass = source.fbx ? HostClassOf(*source.fbx) : std::nullopt;
    if (hostClass) {
        // The reference is known before the entry: materials may refer to each other in rings.
        const Json id = known_[key] = Add(source.fbx->name, nullptr);
        const Reference reference = [this](const FbxObject& o) { return OfFbx(o); };
        Json entry = HostEntry(*source.fbx, *hostClass, source.fbx->name, reference);
        materials_[id.get<std::string>()] = std::move(entry);
        return id;
    }
    if (source.importedIndex < 0) {
        warnings_.Add("a material that no face uses is left out: " + source.fbx->name);
        return nullptr;
    }
    const aiMaterial& from = *scene_.imported->mMaterials[source.importedIndex];
    std::string name = ToUtf8(source.fbx ? source.fbx->name : from.GetName().C_Str());
    if (name.empty())
        name = "Material " + std::to_string(source.importedIndex + 1);
    return known_[key] =
               Add(name, scene_.format == Format::Gltf ? GltfMaterial(from, name, maps_)
                                                       : PhysicalMaterial(from, name, maps_));
}

Json Materials::Add(const std::string& name, Json entry) {
    const std::string id = ids_.Next(ToUtf8(name));
    materials_[id] = std::move(entry);
    return id;
}

} // namespace sceneconv

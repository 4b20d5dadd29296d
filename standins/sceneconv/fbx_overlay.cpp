// What the import library loses of an FBX file: it makes names unique, merges object offsets into
// nodes, knows no material ids, targets, hidden nodes and no host classes.
#include "sceneconv/fbx_attributes.h"
#include "sceneconv/fbx_transform.h"
#include "sceneconv/source_scene.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace sceneconv {

namespace {

/// The library appends digits to a name that it has seen before.
bool MayBeNamed(const std::string& libraryName, const std::string& name) {
    constexpr std::size_t longest = 1000; // the library cuts names at 1023 bytes
    return libraryName.starts_with(name.substr(0, longest));
}

/// Tells materials of one name apart by the numbers among their host parameters.
bool Resembles(const aiMaterial& library, const FbxObject& material) {
    for (const FbxProperty& property : material.properties) {
        const bool number =
            property.values.size() == 1 && !std::holds_alternative<std::string>(property.values[0]);
        float value = 0;
        if (number && property.name.starts_with("3dsMax|") &&
            (library.Get(("$raw." + property.name).c_str(), 0, 0, value) != AI_SUCCESS ||
             std::abs(property.Number() - value) > 1e-5 * std::abs(property.Number()))) {
            return false;
        }
    }
    return true;
}

class FbxOverlay {
  public:
    explicit FbxOverlay(SourceScene& scene)
        : scene_(scene), children_(ChildLists(scene.nodes)), models_(scene.nodes.size()) {}

    /// False when a part of the library's tree is not the file's; that part stays as it is.
    bool Apply() {
        scene_.dropRoot = true;
        scene_.nodes.front().local = Matrix();
        models_.front() = &scene_.fbx->Root();
        bool complete = true;
        for (std::size_t i = 0; i < scene_.nodes.size(); ++i) {
            if (models_[i])
                complete = MatchChildren(i) && complete;
        }
        for (std::size_t i = 1; i < scene_.nodes.size(); ++i) {
            if (models_[i])
                Fill(scene_.nodes[i], *models_[i]);
        }
        return complete;
    }

  private:
    bool MatchChildren(std::size_t parent) {
        const std::vector<const FbxObject*> models = models_[parent]->Sources("Model");
        const std::vector<std::size_t>& nodes = children_[parent];
        if (models.size() != nodes.size())
            return false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (!MayBeNamed(scene_.nodes[nodes[i]].name, models[i]->name))
                return false;
        }
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            models_[nodes[i]] = models[i];
            nodeOf_[models[i]] = nodes[i];
        }
        return true;
    }

    void Fill(SourceNode& node, const FbxObject& model) {
        node.name = model.name;
        if (const Matrix local = FbxLocalTransform(model); IsFinite(local))
            node.local = local;
        if (const Matrix offset = FbxGeometricTransform(model); IsFinite(offset))
            node.objectOffset = offset;
        node.hidden = model.Integer("Show", 1) == 0 || model.Number("Visibility", 1) == 0;
        if (const FbxProperty* properties = model.FindOwn("UDP3DSMAX"))
            node.userProperties = properties->Text();
        FillMaterials(node, model);
        if (const FbxObject* geometry = model.Source("Geometry"))
            FillGeometry(node, *geometry);
        FillAttribute(node, model);
        for (const FbxConnection& source : model.Sources()) {
            const auto target = nodeOf_.find(source.object);
            if (source.property == "LookAtProperty" && target != nodeOf_.end())
                node.target = target->second;
        }
    }

    /// The file's own list by id; a piece finds its place in it by the material's name.
    void FillMaterials(SourceNode& node, const FbxObject& model) {
        const std::vector<MaterialSource> split = std::move(node.materials);
        node.materials.clear();
        for (const FbxObject* material : model.Sources("Material"))
            node.materials.push_back({material, -1});
        std::vector<std::uint32_t> idOf;
        for (const MaterialSource& piece : split)
            idOf.push_back(MaterialId(node, piece.importedIndex));
        for (MeshPiece& piece : node.pieces)
            piece.materialId = idOf[piece.materialId];
    }

    std::uint32_t MaterialId(SourceNode& node, int libraryIndex) {
        if (libraryIndex < 0)
            return 0; // faces without a material
        const aiMaterial& wanted = *scene_.imported->mMaterials[libraryIndex];
        std::optional<std::size_t> found;
        for (std::size_t i = 0; i < node.materials.size(); ++i) {
            const MaterialSource& material = node.materials[i];
            if (material.importedIndex >= 0 || material.fbx->name != wanted.GetName().C_Str())
                continue;
            if (!found || Resembles(wanted, *material.fbx))
                found = i;
        }
        if (found)
            node.materials[*found].importedIndex = libraryIndex;
        return static_cast<std::uint32_t>(found.value_or(0));
    }

    static void FillGeometry(SourceNode& node, const FbxObject& geometry) {
        for (const FbxRecord& record : geometry.record.children) {
            const FbxRecord* name = record.Child("Name");
            if (record.name == "LayerElementUV" && name) {
                const int channel = HostUvChannel(name->Text(0));
                if (channel > 0) {
                    node.uvChannels[static_cast<unsigned>(record.Integer(0))] =
                        static_cast<unsigned>(channel);
                }
            }
        }
        // The host writes a node's wire colour here.
        if (const FbxProperty* color = geometry.FindOwn("Color")) {
            std::array<int, 3> wire{};
            for (std::size_t i = 0; i < 3; ++i) {
                wire[i] =
                    static_cast<int>(std::lround(std::clamp(color->Number(i), 0.0, 1.0) * 255));
            }
            node.wireColor = wire;
        }
    }

    static void FillAttribute(SourceNode& node, const FbxObject& model) {
        node.camera.reset();
        node.light.reset();
        const FbxObject* attribute = model.Source("NodeAttribute");
        if (attribute && attribute->subclass == "Camera")
            node.camera = FbxCamera(*attribute);
        else if (attribute && attribute->subclass == "Light")
            node.light = FbxLight(*attribute);
    }

    SourceScene& scene_;
    std::vector<std::vector<std::size_t>> children_;
    std::vector<const FbxObject*> models_;
    std::map<const FbxObject*, std::size_t> nodeOf_;
};

} // namespace

void OverlayFbx(SourceScene& scene, Warnings& warnings) {
    const FbxObject& settings = scene.fbx->Settings();
    scene.toHost = FbxAxesToHost(settings);
    scene.unit = UnitOf(settings.Number("UnitScaleFactor", 1), warnings);
    if (!FbxOverlay(scene).Apply()) {
        warnings.Add("some nodes could not be found in the FBX records; their pivots, exact names "
                     "and host parameters are missing");
    }
}

} // namespace sceneconv

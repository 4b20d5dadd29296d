#include "tests/pipeline/color_kit.h"

#include "pipeline/vertex_color_bake.h"
#include "simhost/core/host.h"

#include <gtest/gtest.h>

namespace brimwave {

using nlohmann::json;

json SquaresMesh(int elements, const std::vector<int>& ids) {
    json positions = json::array(), triangles = json::array(), faceIds = json::array();
    json groups = json::array(), uvs = json::array(), corners = json::array();
    for (int e = 0; e < elements; ++e) {
        const int first = 4 * e;
        for (int k = 0; k < 4; ++k) {
            positions.insert(positions.end(), {2 * e + (k & 1), k >> 1, 0});
            uvs.push_back({(k & 1) * 0.5, (k >> 1) + e});
        }
        triangles.insert(triangles.end(),
                         {first, first + 1, first + 2, first + 2, first + 1, first + 3});
        corners.insert(corners.end(), {0, 1, 0, 1, 1, 0});
        for (int face = 0; face < 2; ++face) {
            faceIds.push_back(ids[static_cast<size_t>(e) % ids.size()]);
            groups.push_back(1 << (e % 8));
        }
    }
    return {{"positions", positions},
            {"triangles", triangles},
            {"material_ids", faceIds},
            {"smoothing_groups", groups},
            {"normals", {{"values", {0, 0, 1, 0.6, 0, 0.8}}, {"triangles", corners}}},
            {"uvs", {{"1", {{"values", uvs}}}}}};
}

json Squares(int elements, const std::vector<int>& ids) {
    return {{"class", "Editable Mesh"}, {"mesh", SquaresMesh(elements, ids)}};
}

json Bitmaps(int count) {
    json maps = json::array();
    for (int i = 0; i < count; ++i)
        maps.push_back({{"class", "Bitmap"}, {"name", "bitmap " + std::to_string(i)}});
    return maps;
}

json MultiTexture(int maps, int by, int seed) {
    return {{"class", "MultiTexture"},
            {"name", "multi"},
            {"params", {{"rnd_by", by}, {"seed", seed}, {"texmaps", Bitmaps(maps)}}}};
}

json CoronaMultiMap(int maps, const json& switches) {
    json params = {
        {"items", maps}, {"seed", 7}, {"texmaps", Bitmaps(maps)}, {"randomizeInstance", false}};
    params.update(switches);
    return {{"class", "CoronaMultiMap"}, {"name", "corona"}, {"params", params}};
}

json Shows(const json& map) {
    return {{"class", "Physical Material"}, {"params", {{"base_color_map", map}}}};
}

std::vector<std::wstring> Bake() {
    const std::wstring mark = L"[Brimwave VC] ";
    const size_t before = simhost::HostLog().size();
    BakeMultiTextureVC();
    std::vector<std::wstring> lines;
    for (size_t i = before; i < simhost::HostLog().size(); ++i) {
        const std::wstring& line = simhost::HostLog()[i].text;
        EXPECT_TRUE(line.starts_with(mark)) << WideToUtf8(line);
        lines.push_back(line.substr(std::min(line.size(), mark.size())));
    }
    return lines;
}

Mesh* ShownMesh(INode& node) {
    auto* const shown = dynamic_cast<TriObject*>(node.EvalWorldState(0).obj);
    return shown ? &shown->GetMesh() : nullptr;
}

std::vector<Bytes> FaceColors(INode& node) {
    std::vector<Bytes> colors;
    const Mesh* const mesh = ShownMesh(node);
    if (!mesh || !mesh->vertCol || !mesh->vcFace)
        return colors;
    for (int f = 0; f < mesh->getNumFaces(); ++f) {
        const TVFace& face = mesh->vcFace[f];
        const VertColor color = mesh->vertCol[face.t[0]];
        for (const DWORD corner : face.t)
            EXPECT_EQ(mesh->vertCol[corner], color) << "blended over face " << f;
        const auto byte = [](float part) { return static_cast<int>(std::lround(part * 255)); };
        colors.push_back({byte(color.x), byte(color.y), byte(color.z)});
    }
    return colors;
}

std::vector<int> FaceChoices(INode& node) {
    std::vector<int> choices;
    for (const Bytes& color : FaceColors(node)) {
        const auto decoded = testing::DecodeChoice(color.choice / 255.0, color.count / 255.0,
                                                   color.variation / 255.0);
        choices.push_back(decoded ? decoded->choice : -1);
    }
    return choices;
}

} // namespace brimwave

// The bake of random choices into vertex colours: its cost for each face has to stay the same
// however large the mesh is.
#include "pipeline/vertex_color_bake.h"

#include "pipeline/choice_colors.h"
#include "pipeline/mesh_elements.h"
#include "simhost/core/host.h"
#include "simhost/files/scene_file.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <triobj.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <stdexcept>

namespace brimwave {
namespace {

constexpr int facesPerElement = 10;

/// Elements of ten faces each, fans around a vertex; `shuffled` puts faces and vertices of
/// different elements beside each other, as a mesh that was edited for long has them.
void FillMesh(Mesh& mesh, int elements, bool shuffled) {
    constexpr int corners = facesPerElement + 2;
    mesh.setNumVerts(elements * corners);
    mesh.setNumFaces(elements * facesPerElement);
    std::vector<DWORD> places(static_cast<size_t>(mesh.getNumVerts()));
    std::iota(places.begin(), places.end(), 0u);
    std::mt19937 random(1);
    if (shuffled)
        std::shuffle(places.begin(), places.end(), random);
    const auto place = [&](int vertex) { return places[static_cast<size_t>(vertex)]; };
    for (int e = 0; e < elements; ++e)
        for (int f = 0; f < facesPerElement; ++f) {
            const int first = e * corners;
            mesh.faces[e * facesPerElement + f].setVerts(place(first), place(first + f + 1),
                                                         place(first + f + 2));
        }
    if (shuffled)
        std::shuffle(mesh.faces, mesh.faces + mesh.getNumFaces(), random);
    mesh.setMapSupport(1);
}

Mesh& OpenFloor() {
    const nlohmann::json map = {
        {"class", "CoronaMultiMap"},
        {"params",
         {{"items", 3},
          {"hueRandom", 0.1},
          {"randomizeInstance", false},
          {"randomizeMeshElement", true},
          {"texmaps", {{{"class", "Bitmap"}}, {{"class", "Bitmap"}}, {{"class", "Bitmap"}}}}}}};
    const nlohmann::json mesh = {{"positions", {0, 0, 0, 1, 0, 0, 0, 1, 0}},
                                 {"triangles", {0, 1, 2}}};
    const nlohmann::json scene = {
        {"format", "simhost-scene"},
        {"version", 1},
        {"nodes",
         {{{"name", "floor"},
           {"object", {{"class", "Editable Mesh"}, {"mesh", mesh}}},
           {"material",
            {{"class", "Physical Material"}, {"params", {{"base_color_map", map}}}}}}}}};
    if (const simhost::LoadResult loaded = simhost::LoadSceneText(scene.dump()); !loaded)
        throw std::runtime_error(loaded.error);
    Object* const object = GetCOREInterface()->GetRootNode()->GetChildNode(0)->GetObjectRef();
    return dynamic_cast<TriObject&>(*object).GetMesh();
}

void CountFaces(benchmark::State& state, const Mesh& mesh) {
    state.SetItemsProcessed(state.iterations() * mesh.getNumFaces());
    state.SetComplexityN(mesh.getNumFaces());
}

void BakeFloor(benchmark::State& state) {
    Mesh& mesh = OpenFloor();
    FillMesh(mesh, static_cast<int>(state.range(0)), state.range(1) != 0);
    for (auto run : state) {
        mesh.setNumVertCol(0);
        mesh.setNumVCFaces(0);
        BakeMultiTextureVC();
        if (mesh.getNumVertCol() < 2)
            state.SkipWithError("nothing was baked");
    }
    CountFaces(state, mesh);
    simhost::HostLog().clear();
    OpenFloor();
}

void Elements(benchmark::State& state) {
    Mesh mesh;
    FillMesh(mesh, static_cast<int>(state.range(0)), state.range(1) != 0);
    for (auto run : state)
        if (CollectMeshElements(mesh).count != static_cast<std::uint32_t>(state.range(0)))
            state.SkipWithError("another number of elements");
    CountFaces(state, mesh);
}

// 200,000 and 600,000 faces, and two million.
void Sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"elements", "shuffled"})->Unit(benchmark::kMillisecond);
    for (const int shuffled : {0, 1})
        for (const int elements : {20000, 60000, 200000})
            bench->Args({elements, shuffled});
}
BENCHMARK(BakeFloor)->Apply(Sizes);
BENCHMARK(Elements)->Apply(Sizes);

} // namespace
} // namespace brimwave

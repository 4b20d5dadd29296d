// The pipeline's walks over large scenes: their cost has to grow with the scene, no faster.
#include "pipeline/material_names.h"
#include "pipeline/texture_collection.h"
#include "simhost/files/scene_file.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace brimwave {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

void Open(const json& scene) {
    if (const simhost::LoadResult loaded = simhost::LoadSceneText(scene.dump()); !loaded)
        throw std::runtime_error(loaded.error);
}

json SceneWith(json materials) {
    json nodes = json::array();
    for (const auto& entry : materials.items())
        nodes.push_back(
            {{"name", "box " + entry.key()}, {"object", "box"}, {"material", entry.key()}});
    return {{"format", "simhost-scene"},
            {"version", 1},
            {"objects", {{"box", {{"class", "Box"}}}}},
            {"materials", std::move(materials)},
            {"nodes", std::move(nodes)}};
}

/// `groups` names shared by all materials; each has to be made unique and given back.
void MaterialNames(benchmark::State& state) {
    const auto count = state.range(0);
    const auto groups = state.range(1) == 0 ? count : state.range(1);
    json materials = json::object();
    for (std::int64_t i = 0; i < count; ++i)
        materials[std::to_string(i)] = {
            {"class", "Double Sided"},
            {"name", "Painted metal, worn #" + std::to_string(i % groups)}};
    Open(SceneWith(std::move(materials)));
    for (auto run : state) {
        const auto entries = DeduplicateMaterialNames();
        if (static_cast<std::int64_t>(entries.size()) != count || RestoreMaterialNames(entries))
            state.SkipWithError("not every material was renamed and restored");
    }
    state.SetItemsProcessed(state.iterations() * count);
    Open(SceneWith(json::object()));
}
BENCHMARK(MaterialNames)
    ->ArgNames({"materials", "names"})
    ->ArgsProduct({{25000, 50000, 100000}, {1, 0}})
    ->Unit(benchmark::kMillisecond);

/// Bitmap maps of distinct files, all of them in one folder of the test's own, which is where
/// the job folder lies as well. A real disk's share is by far the largest and varies by itself:
/// a TMPDIR in memory shows what the collection adds.
class TextureFiles : public benchmark::Fixture {
  public:
    void SetUp(benchmark::State& state) override {
        folder_ = fs::temp_directory_path() / "brimwave_texture_bench";
        fs::create_directories(folder_ / "job");
        json materials = json::object();
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const std::string file = (folder_ / (std::to_string(i) + ".png")).string();
            const bool exists = i % 10 != 0; // a tenth is missing
            if (exists)
                std::ofstream(file) << "texture " << i;
            const json map = {{"class", "Bitmap"}, {"file", file}};
            materials[std::to_string(i)] = {{"class", "Physical Material"},
                                            {"params", {{"base_color_map", map}}}};
        }
        Open(SceneWith(std::move(materials)));
    }
    void TearDown(benchmark::State&) override {
        Open(SceneWith(json::object()));
        fs::remove_all(folder_);
    }

  protected:
    fs::path folder_;
};

BENCHMARK_DEFINE_F(TextureFiles, Collect)(benchmark::State& state) {
    const std::string job = (folder_ / "job").string();
    for (auto run : state) {
        const auto result = CollectTextures(std::wstring(job.begin(), job.end()));
        if (static_cast<std::int64_t>(result.copied + result.missing.size()) != state.range(0))
            state.SkipWithError("not every file was met");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_REGISTER_F(TextureFiles, Collect)
    ->ArgName("maps")
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace brimwave

// What writing a package costs, beside a yardstick: RapidJSON's Writer writing the same members
// with the same values in the same order, all of them lying ready.
#include "package/scene_package.h"

#include "bench/package/recording.h"
#include "simhost/files/scene_file.h"

#include <benchmark/benchmark.h>
#include <max.h>
#include <nlohmann/json.hpp>
#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Bytes that were taken since the counting began, and the most of them held at one time.
bool counting = false;
std::ptrdiff_t heldBytes = 0;
std::ptrdiff_t peakBytes = 0;

} // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    if (counting) {
        heldBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
        peakBytes = std::max(peakBytes, heldBytes);
    }
    return block;
}

void operator delete(void* block) noexcept {
    if (counting && block)
        heldBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace brimwave {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

/// The folder of one run, removed at its end.
class Folder {
  public:
    Folder() : path_(fs::temp_directory_path() / ("bench_package_" + std::to_string(getpid()))) {
        fs::create_directories(path_);
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    [[nodiscard]] std::string File() const { return Path("1.json"); }
    [[nodiscard]] std::string Path(const char* name) const { return (path_ / name).string(); }

  private:
    fs::path path_;
};

json Bitmap(const std::string& name) {
    return {{"class", "CoronaBitmap"},
            {"name", name},
            {"params",
             {{"filename", "D:\\projects\\house\\textures\\" + name + ".jpg"},
              {"uvwScale", {1.37, 2.11, 1}},
              {"realWorldScale", true}}}};
}

/// Objects of one mesh, with one material of six bitmaps of its own for every twenty of them.
json SceneOf(std::int64_t objects) {
    const char* const slots[] = {"baseTexmap",      "baseRoughnessTexmap", "opacityTexmap",
                                 "metalnessTexmap", "baseBumpTexmap",      "displacementTexmap"};
    json materials = json::object(), maps = json::object(), nodes = json::array();
    for (std::int64_t i = 0; i < objects; ++i) {
        const std::string id = std::to_string(i / 20);
        if (i % 20 == 0) {
            json params = {{"baseColor", {0.8, 0.713, 0.4}}, {"baseRoughness", 0.373}};
            for (const char* const slot : slots) {
                const std::string map = std::string(slot) + " " + id;
                maps[map] = Bitmap(map);
                params[slot] = map;
            }
            materials[id] = {{"class", "\rCoronaPhysicalMtl"},
                             {"name", "Painted wood " + id},
                             {"params", params}};
        }
        nodes.push_back(
            {{"name", "Chair leg " + std::to_string(i)}, {"object", "mesh"}, {"material", id}});
    }
    return {{"format", "simhost-scene"},
            {"version", 1},
            {"objects",
             {{"mesh",
               {{"class", "Editable Mesh"},
                {"mesh",
                 {{"positions", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                  {"triangles", {{0, 1, 2}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}},
                  {"material_ids", {0, 1, 1, 0}}}}}}}},
            {"maps", std::move(maps)},
            {"materials", std::move(materials)},
            {"nodes", std::move(nodes)}};
}

/// Loads a scene, and gives the memory that the loading took back to the system.
void Open(const json& scene) {
    const std::string text = scene.dump();
    if (const simhost::LoadResult loaded = simhost::LoadSceneText(text); !loaded)
        throw std::runtime_error(loaded.error);
    malloc_trim(0);
}

bool WriteTo(const std::string& path) {
    return WriteScenePackage(std::wstring(path.begin(), path.end())).success;
}

/// Names all objects anew: an export leaves each with a name of its own.
void NameAll(bool numbered) {
    INode* const root = GetCOREInterface()->GetRootNode();
    const std::wstring stem = L"Chair leg ";
    for (int i = 0; i < root->NumberOfChildren(); ++i)
        root->GetChildNode(i)->SetName(numbered ? (stem + std::to_wstring(i)).c_str()
                                                : stem.c_str());
}

/// The most bytes that an export holds at one time.
double PeakBytesOf(const std::string& path) {
    heldBytes = peakBytes = 0;
    counting = true;
    WriteTo(path);
    counting = false;
    return static_cast<double>(peakBytes);
}

void Report(benchmark::State& state, const std::string& path) {
    state.counters["bytes"] = static_cast<double>(fs::file_size(path));
    state.counters["per_object"] = benchmark::Counter(
        static_cast<double>(state.range(0)),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void WritePackage(benchmark::State& state) {
    const Folder folder;
    const bool oneName = state.range(1) != 0;
    Open(SceneOf(state.range(0)));
    for (auto run : state) {
        if (oneName) {
            state.PauseTiming();
            NameAll(false);
            state.ResumeTiming();
        }
        if (!WriteTo(folder.File()))
            state.SkipWithError("no package was written");
    }
    NameAll(!oneName);
    const double peak = PeakBytesOf(folder.File());
    Report(state, folder.File());
    state.counters["memory/bytes"] = peak / static_cast<double>(fs::file_size(folder.File()));
}
BENCHMARK(WritePackage)
    ->ArgNames({"objects", "one_name"})
    ->ArgsProduct({{1000, 10000, 100000}, {0}})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond);

/// A light with an IES file of 100 MB.
void EmbedIesFile(benchmark::State& state) {
    const Folder folder;
    const std::string line = "  12.5 13 14.25 15\r\n";
    {
        std::ofstream file(folder.Path("big.ies"), std::ios::binary);
        for (size_t size = 0; size < 100'000'000; size += line.size())
            file << line;
    }
    Open({{"format", "simhost-scene"},
          {"version", 1},
          {"nodes",
           {{{"name", "lamp"},
             {"object",
              {{"class", "CoronaLight"}, {"params", {{"iesFile", folder.Path("big.ies")}}}}}}}}});
    for (auto run : state)
        if (!WriteTo(folder.File()))
            state.SkipWithError("no package was written");
    const double peak = PeakBytesOf(folder.File());
    state.counters["bytes"] = static_cast<double>(fs::file_size(folder.File()));
    state.counters["memory/bytes"] = peak / state.counters["bytes"];
}
BENCHMARK(EmbedIesFile)->Unit(benchmark::kMillisecond);

/// Texts in the encoding in which the host hands them out, or ready in that of the file.
template <class Encoding>
void Yardstick(benchmark::State& state) {
    const Folder folder;
    Open(SceneOf(state.range(0)));
    if (!WriteTo(folder.File()))
        state.SkipWithError("no package was written");
    const auto recording = Record<Encoding>(folder.File());
    const auto close = [](std::FILE* file) { std::fclose(file); };
    for (auto run : state) {
        const std::unique_ptr<std::FILE, decltype(close)> file(
            std::fopen(folder.File().c_str(), "wb"), close);
        char buffer[65536];
        rapidjson::FileWriteStream stream(file.get(), buffer, sizeof buffer);
        rapidjson::Writer<rapidjson::FileWriteStream, Encoding, rapidjson::UTF8<>> writer(stream);
        Replay(recording, writer);
        stream.Flush();
    }
    Report(state, folder.File());
}
BENCHMARK(Yardstick<rapidjson::UTF16<wchar_t>>)
    ->ArgNames({"objects"})
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Yardstick<rapidjson::UTF8<>>)
    ->ArgNames({"objects"})
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace brimwave

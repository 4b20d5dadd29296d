#include "pipeline/texture_collection.h"

#include "host/bitmap_file.h"
#include "tests/pipeline/scene_kit.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::TempFolder;
using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

json Bitmap(const std::wstring& file) {
    return {{"class", "Bitmap"}, {"name", "b"}, {"file", WideToUtf8(file)}};
}

json CoronaBitmap(const std::wstring& file) {
    return {{"class", "CoronaBitmap"}, {"params", {{"filename", WideToUtf8(file)}}}};
}

/// A scene saved in `folder` whose one box has a material with the given maps.
class TextureCollection : public ::testing::Test {
  protected:
    void SetUp() override {
        scene_ = EmptyScene();
        scene_["file_name"] = WideToUtf8(work_.Path(L"scene\\room.max"));
        scene_["materials"]["m"] = Holder(json::array());
        scene_["nodes"] = json::array({BoxNode("box", "m")});
    }

    /// A material of no particular class with these maps in its slots.
    static json Holder(const json& maps) {
        json slots = json::array();
        for (const json& map : maps)
            slots.push_back({{"name", "slot"}, {"map", map}});
        return {{"class", "Holder"},
                {"super_class", "material"},
                {"blocks", json::array()},
                {"slot_list", slots}};
    }

    void Use(const json& maps) { scene_["materials"]["m"] = Holder(maps); }

    TextureCollectResult Collect() {
        OpenScene(scene_);
        return CollectTextures(job_.Path());
    }

    /// Contents of a collected file; "(none)" when it is not there.
    std::string Copied(std::wstring_view name) const {
        const std::wstring path = job_.Path(L"textures\\" + std::wstring(name));
        return TempFolder::Exists(path) ? TempFolder::Read(path) : "(none)";
    }

    TempFolder work_;
    TempFolder job_;
    json scene_;
};

TEST_F(TextureCollection, CopiesWhatMaterialsAndEnvironmentReachOnce) {
    scene_["maps"] = {
        {"wood", Bitmap(work_.Write(L"wood.jpg", "wood"))},
        {"woodAgain", Bitmap(work_.Path(L"wood.jpg"))},
        {"inner", CoronaBitmap(work_.Write(L"inner.png", "inner"))},
        {"mix", {{"class", "Mix"}, {"slots", {"inner", "wood"}}}},
        {"sky",
         {{"class", "VRayHDRI"},
          {"params", {{"HDRIMapName", WideToUtf8(work_.Write(L"sky.hdr", "sky"))}}}}},
        {"onLamp", Bitmap(work_.Write(L"lamp.png", "lamp"))},
    };
    scene_["materials"] = {
        {"m", Holder({"mix", "wood", "woodAgain", nullptr})},
        {"multi",
         {{"class", "Multi/Sub-Object"}, {"sub_materials", {"m", nullptr, "deep", "multi"}}}},
        {"deep", Holder(json::array({Bitmap(work_.Write(L"deep.png", "deep"))}))},
        {"lamp", Holder(json::array({"onLamp"}))},
    };
    scene_["nodes"] = {BoxNode("box", "m"),
                       BoxNode("other", "multi"),
                       {{"name", "lamp"}, {"object", {{"class", "Omni"}}}, {"material", "lamp"}}};
    scene_["environment"] = {{"map", "sky"}, {"use_map", false}};

    const TextureCollectResult result = Collect();
    EXPECT_EQ(result.copied, 4u);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_EQ(Copied(L"wood.jpg"), "wood");
    EXPECT_EQ(Copied(L"inner.png"), "inner");
    EXPECT_EQ(Copied(L"deep.png"), "deep");
    EXPECT_EQ(Copied(L"sky.hdr"), "sky");
    EXPECT_EQ(Copied(L"lamp.png"), "(none)");
}

TEST_F(TextureCollection, ListsMissingFilesByNameInTheOrderMet) {
    Use({Bitmap(L"C:\\gone\\b.jpg"), Bitmap(L"/gone/a.jpg"),
         Bitmap(work_.Write(L"here.png", "here")), CoronaBitmap(L"C:\\gone\\b.jpg"),
         CoronaBitmap(L"D:\\gone\\b.jpg"), Bitmap(L""), Bitmap(L" \t\r\n"), CoronaBitmap(L"")});
    const TextureCollectResult result = Collect();
    EXPECT_EQ(result.copied, 1u);
    // One line for each path text, so two for the two that share a name.
    EXPECT_THAT(result.missing,
                ElementsAre(L"Missing: b.jpg", L"Missing: a.jpg", L"Missing: b.jpg"));
}

TEST_F(TextureCollection, FindsFilesBesideTheSceneAndThroughTheHost) {
    work_.Write(L"scene\\maps\\rel.png", "relative");
    work_.Write(L"scene\\moved.png", "moved");
    work_.Write(L"search\\far.png", "far");
    scene_["map_paths"] = {WideToUtf8(work_.Path(L"search"))};
    Use({Bitmap(L"maps\\rel.png"), CoronaBitmap(L"E:\\old\\place\\moved.png"),
         Bitmap(L"E:\\old\\far.png")});
    const TextureCollectResult result = Collect();
    EXPECT_EQ(result.copied, 3u);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_EQ(Copied(L"rel.png"), "relative");
    EXPECT_EQ(Copied(L"moved.png"), "moved");
    EXPECT_EQ(Copied(L"far.png"), "far");
}

TEST_F(TextureCollection, OfTwoFilesOfOneNameTheLaterStays) {
    Use({Bitmap(work_.Write(L"a\\wood.jpg", "first")),
         Bitmap(work_.Write(L"b\\wood.jpg", "second"))});
    EXPECT_EQ(Collect().copied, 2u);
    EXPECT_EQ(Copied(L"wood.jpg"), "second");
    EXPECT_EQ(TempFolder::Read(work_.Path(L"a\\wood.jpg")), "first");
}

TEST_F(TextureCollection, TakesPathsAsUsersLeaveThem) {
    const std::wstring longName = std::wstring(200, L'n') + L".png";
    const std::wstring longPath = work_.Write(std::wstring(100, L'd') + L"\\" + longName, "long");
    ASSERT_GT(longPath.size(), 260u);
    std::wstring forward = work_.Write(L"fw\\d.png", "forward");
    std::replace(forward.begin(), forward.end(), L'\\', L'/');
    Use({Bitmap(L"\r\n\t " + work_.Write(L"padded.png", "padded") + L" \r\n"), Bitmap(forward),
         Bitmap(work_.Write(L"Дуб-\x00e9 \xd83c\xdf33.png", "unicode")), Bitmap(longPath)});
    const TextureCollectResult result = Collect();
    EXPECT_EQ(result.copied, 4u);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_EQ(Copied(L"padded.png"), "padded");
    EXPECT_EQ(Copied(L"d.png"), "forward");
    EXPECT_EQ(Copied(L"Дуб-\x00e9 \xd83c\xdf33.png"), "unicode");
    EXPECT_EQ(Copied(longName), "long");
}

TEST_F(TextureCollection, GoesOnPastWhatThrows) {
    json nameless = Bitmap(work_.Write(L"nameless.png", "n"));
    nameless["throws"] = {"GetMapName"};
    json broken = CoronaBitmap(work_.Write(L"broken.png", "b"));
    broken["throws"] = true;
    json closed = {{"class", "Mix"}, {"throws", {"NumSubTexmaps"}}};
    Use({nameless, broken, closed, Bitmap(work_.Write(L"fine.png", "fine")),
         Bitmap(L"C:\\gone.png")});
    scene_["faults"] = {{"throws", {"GetEnvironmentMap", "GetFullFilePath", "GetCurFilePath"}}};
    const TextureCollectResult result = Collect();
    EXPECT_EQ(result.copied, 1u);
    EXPECT_EQ(Copied(L"fine.png"), "fine");
    EXPECT_THAT(result.missing, ElementsAre(L"Missing: gone.png"));
}

TEST_F(TextureCollection, CopyThatFailsStillCountsAndStopsNothing) {
    std::filesystem::create_directories(job_.NativePath() / "textures" / "taken.png");
    Use({Bitmap(work_.Write(L"taken.png", "t")), Bitmap(work_.Write(L"fine.png", "fine"))});
    EXPECT_EQ(Collect().copied, 2u);
    EXPECT_EQ(Copied(L"fine.png"), "fine");
}

TEST_F(TextureCollection, KnowsBitmapsByTheirClassName) {
    const struct {
        const char* className;
        bool collected;
    } rows[] = {
        {"VRayHDRI", true},   {"vraybitmap", true},     {"\r_CoronaBitmap", true},
        {"[1] x", false},     {"CoronaBitmap2", false}, {"My CoronaBitmap", false},
        {"VRayHDRI ", false}, {"Bitmap", false},        {"***", false},
    };
    for (const auto& row : rows) {
        Use({{{"class", row.className},
              {"class_id", {"0x1234", "0x5678"}},
              {"replace_blocks", true},
              {"blocks", json::array()}}});
        OpenScene(scene_);
        Mtl* const holder = GetCOREInterface()->GetRootNode()->GetChildNode(0)->GetMtl();
        EXPECT_EQ(IsBitmapTexmap(*holder->GetSubTexmap(0)), row.collected) << row.className;
    }
}

} // namespace
} // namespace brimwave

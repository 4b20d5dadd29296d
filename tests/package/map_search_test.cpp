// Maps that the script engine finds by their names.
#include "package/map_search.h"
#include "tests/package/package_kit.h"

#include "host/script.h"
#include "host/text.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

using brimwave::testing::Box;
using brimwave::testing::EmptyScene;
using brimwave::testing::OpenScene;
using nlohmann::json;

/// A map that the scene does not hold and that has no file. Asked for the file, the script by
/// handle fails, and the scene's first map of the same name has to answer.
class Namesake final : public Texmap {
  public:
    explicit Namesake(const wchar_t* name) : name_(name) {}
    Class_ID ClassID() override { return Class_ID(1, 2); }
    void GetClassName(MSTR& s, bool /*localized*/) const override { s = L"Namesake"; }
    MSTR GetName() override { return name_; }
    void SetName(const MSTR& name) override { name_ = name; }

  private:
    MSTR name_;
};

constexpr MapSearch searches[] = {MapSearch::Output, MapSearch::GradientRamp,
                                  MapSearch::Properties};

/// The file of the first map of that name; "-" when there is none.
std::wstring FileOfMapNamed(MapSearch search, const wchar_t* name) {
    Namesake wanted(name);
    const wchar_t* const local = search == MapSearch::GradientRamp ? L"gr" : L"mp";
    return RunOnMap(wanted, search, std::wstring(local) + L".filename").value_or(L"-");
}

json BitmapNamed(const std::string& name, const std::string& file) {
    return {{"class", "Bitmap"}, {"name", name}, {"file", file}};
}

json Coated(const json& map) {
    return {{"class", "Physical Material"}, {"name", "m"}, {"params", {{"base_color_map", map}}}};
}

TEST(MapSearch, TakesTheFirstInSceneOrder) {
    json scene = EmptyScene();
    scene["maps"] = {
        {"first", BitmapNamed("Same", "first.png")},
        {"second", BitmapNamed("Same", "second.png")},
        {"deep", BitmapNamed("Deep", "deep.png")},
        {"mix",
         {{"class", "Mix"}, {"name", "Mix"}, {"params", {{"map1", "deep"}, {"map2", "second"}}}}}};
    scene["materials"] = {
        {"loop",
         {{"class", "Multi/Sub-Object"},
          {"name", "loop"},
          {"sub_materials", {"loop", nullptr, "inner", "second"}}}},
        {"inner", Coated("mix")},
        {"second", Coated("first")},
        {"bad", {{"class", "Physical Material"}, {"name", "bad"}, {"throws", {"GetName"}}}},
        {"other", Coated(BitmapNamed("Other", "other.png"))}};
    scene["nodes"] = {Box("None", nullptr), Box("Bad", "bad"), Box("A", "loop"), Box("B", "other")};
    OpenScene(scene);
    for (const MapSearch search : searches) {
        EXPECT_EQ(FileOfMapNamed(search, L"Same"), L"second.png"); // the mix stands before
        EXPECT_EQ(FileOfMapNamed(search, L"Deep"), L"deep.png");
        EXPECT_EQ(FileOfMapNamed(search, L"Other"), L"other.png");
        EXPECT_EQ(FileOfMapNamed(search, L"m"), L"-"); // a material's name
        EXPECT_EQ(FileOfMapNamed(search, L"same"), L"-");
    }
}

TEST(MapSearch, NamesAreTextWhateverTheyHold) {
    const wchar_t* const names[] = {
        L"a \"quoted\" one",
        L"C:\\new\\temp\\x41",
        L"ends in \\",
        L"\"); ::bwTestHit = true; (\"",
        L"two\nlines\r\tand a tab",
        L"Дуб — 木",
        L"%1 \\% \\* ~X~ -- /* $",
    };
    json scene = EmptyScene();
    for (const wchar_t* name : names)
        scene["nodes"].push_back(
            Box("Box", Coated(BitmapNamed(WideToUtf8(name), WideToUtf8(name)))));
    OpenScene(scene);
    static_cast<void>(RunScriptString(L"(::bwTestHit = false; \"\")"));
    for (const MapSearch search : searches)
        for (const wchar_t* name : names)
            EXPECT_EQ(FileOfMapNamed(search, name), name);
    EXPECT_EQ(RunScriptString(L"(::bwTestHit as string)"), L"false");
}

TEST(MapSearch, GivesNothingForErrorsAndOtherValues) {
    json scene = EmptyScene();
    scene["nodes"] = json::array({Box("A", Coated(BitmapNamed("Map", "map.png")))});
    OpenScene(scene);
    Namesake wanted(L"Map");
    for (const wchar_t* body : {L"\"ERROR:NOOUTPUT\"", L"mp.nothing", L"1", L"1.5", L"undefined",
                                L"throw \"x\"", L"mp", L"("})
        EXPECT_FALSE(RunOnMap(wanted, MapSearch::Output, body)) << body;
    EXPECT_EQ(RunOnMap(wanted, MapSearch::Output, L"mp.name"), L"Map");
}

} // namespace
} // namespace brimwave

#pragma once
#include "pipeline/export_sequence.h"
#include "simhost/scene/snapshot.h"
#include "tests/pipeline/scene_kit.h"
#include "tests/support/fake_http.h"
#include "tests/support/recording_panel.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace brimwave::testing {

inline constexpr wchar_t serviceBase[] = L"https://service.test:8443";
inline constexpr wchar_t accountAnswer[] =
    L"{\"balance\": 42, \"daily_limit\": 10, \"conversions_left\": 7}";

/// A saved scene with two boxes, a renderable spline in a group, unsafe material names and three
/// textures of which one exists; a panel filled in; and an Exchange Folder.
class SequenceTest : public ::testing::Test {
  protected:
    void SetUp() override {
        using nlohmann::json;
        const json here = {{"class", "Bitmap"},
                           {"file", WideToUtf8(work.Write(L"here.png", "picture"))}};
        const auto gone = [](const char* file) -> json {
            return {{"class", "Bitmap"}, {"file", file}};
        };
        scene = EmptyScene();
        scene["file_name"] = "C:\\Scenes\\room.max";
        scene["materials"] = {
            {"paint",
             {{"class", "Physical Material"},
              {"name", "Wall Paint"},
              {"params", {{"base_color_map", here}, {"bump_map", gone("C:\\gone\\a.png")}}}}},
            {"steel",
             {{"class", "Physical Material"},
              {"name", "Wall#Paint"},
              {"params", {{"base_color_map", gone("C:\\gone\\b.png")}}}}},
        };
        json group = {{"name", "Group"}, {"group_head", true}};
        group["children"] = {BoxNode("Wall", "paint"), SplineNode("Cable")};
        for (json& member : group["children"])
            member["group_member"] = true;
        scene["nodes"] = {group, BoxNode("Door", "steel")};
        scene["selection"] = {"Door", "Cable"};
        panel.folder = exchange.Path();
        Open();
    }

    void Open() {
        OpenScene(scene);
        before_ = simhost::SnapshotScene();
    }

    /// The name of the one folder in the Exchange Folder; empty when there is none.
    [[nodiscard]] std::wstring JobFolder() const {
        std::wstring name;
        for (const auto& entry : std::filesystem::directory_iterator(exchange.NativePath())) {
            EXPECT_TRUE(name.empty()) << "two job folders";
            name = entry.path().filename().wstring();
        }
        return name;
    }

    [[nodiscard]] bool Exists(std::wstring_view name) const {
        return TempFolder::Exists(exchange.Path(name));
    }

    void ExpectSceneAsBefore() const { EXPECT_EQ(simhost::SnapshotScene(), before_); }

    /// Forgets the requests and answers so far.
    FakeHttp& NewService() { return http.emplace(); }

    void ClearExchange() const {
        for (const auto& entry : std::filesystem::directory_iterator(exchange.NativePath()))
            std::filesystem::remove_all(entry.path());
    }

    /// The panel is ready for another run.
    void ExpectFinished() const {
        EXPECT_TRUE(panel.enabled);
        EXPECT_FALSE(panel.spinning);
        EXPECT_EQ(panel.progress, 100);
    }

    TempFolder work;
    TempFolder exchange;
    nlohmann::json scene;
    RecordingPanel panel;
    std::optional<FakeHttp> http{std::in_place};

  private:
    ScopedVariable service_{"BRIMWAVE_SERVICE_URL", WideToUtf8(serviceBase) + "/"};
    ScopedVariable noVRay_{"BRIMWAVE_VRAY_CONVERT", ""};
    std::string before_;
};

} // namespace brimwave::testing

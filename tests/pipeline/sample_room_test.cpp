// The sample scene through the whole sequence: its splines arrive, and nothing of it changes
// but what the bake of vertex colours leaves.
#include "tests/pipeline/sequence_kit.h"

#include "pipeline/vertex_color_bake.h"
#include "simhost/files/scene_file.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::accountAnswer;
using brimwave::testing::TempFolder;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace std::string_literals;

class SampleRoom : public brimwave::testing::SequenceTest {
  protected:
    void SetUp() override {
        SequenceTest::SetUp();
        OpenRoom();
        untouched_ = simhost::SnapshotScene();
        BakeMultiTextureVC();
        baked_ = simhost::SnapshotScene();
        OpenRoom();
        http->Answer(200, accountAnswer).Answer(201, L"{}");
    }

    static void OpenRoom() {
        const std::filesystem::path file = testing::SourcePath("samples/room/room.json");
        const simhost::LoadResult loaded = simhost::LoadSceneFile(file.wstring());
        ASSERT_TRUE(loaded) << loaded.error;
    }

    std::string untouched_, baked_;
};

TEST_F(SampleRoom, SplinesArriveAsMeshesUnderTheirNames) {
    ExportAndSend(panel);
    EXPECT_THAT(WideToUtf8(panel.status), ::testing::StartsWith("Done  OK"));
    const std::string package = http->Requests().back().body.value_or("");
    EXPECT_THAT(package, HasSubstr("\"object_name\": \"Lamp cable\""));
    EXPECT_THAT(package, Not(HasSubstr("\"object_name\": \"Guide\"")));
    EXPECT_THAT(package, Not(HasSubstr("_bwSplineSrc")));
    const std::wstring job = JobFolder();
    const std::string fbx =
        TempFolder::Read(exchange.Path(job + L"\\" + job.substr(0, job.size() - 9) + L".fbx"));
    const size_t twin = fbx.find("Lamp cable\0\1Model"s);
    ASSERT_NE(twin, std::string::npos);
    EXPECT_EQ(fbx.substr(twin + "Lamp cable\0\1Model"s.size(), 9), "S\4\0\0\0Mesh"s);
    EXPECT_EQ(simhost::SnapshotScene(), baked_);
}

TEST_F(SampleRoom, AFailedExportLeavesNoTwinEither) {
    for (const int progress : {12, 25, 65, 88}) {
        SCOPED_TRACE(progress);
        int twins = 0;
        panel.onCall = [&](const std::wstring& line) {
            if (!line.starts_with(L"status " + std::to_wstring(progress) + L" busy"))
                return;
            twins = NodeNamed(L"Lamp cable_bwSplineSrc") ? 1 : 0;
            throw std::runtime_error("the panel broke");
        };
        NewService().Answer(200, accountAnswer).Answer(201, L"{}");
        ExportAndSend(panel);
        EXPECT_EQ(twins, 1);
        // The bake comes after the stage's announcement; once baked, it changes nothing more.
        EXPECT_EQ(simhost::SnapshotScene(), progress == 12 ? untouched_ : baked_);
    }
}

} // namespace
} // namespace brimwave

// The sample's floor and books: baked, written as FBX, read by the Open Asset Import Library, and
// decoded as a converter would. With BRIMWAVE_DEMO_FBX the FBX of a run of the demo is read too.
#include "pipeline/random_choice.h"
#include "simhost/files/fbx_export.h"
#include "simhost/files/scene_file.h"
#include "tests/pipeline/color_kit.h"
#include "tests/support/places.h"
#include "tests/support/temp_folder.h"
#include "text/utf8.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <gmock/gmock.h>

#include <cstdlib>

namespace brimwave {
namespace {

using testing::DecodeChoice;
using ::testing::ElementsAreArray;
using ::testing::SizeIs;
using testing::TempFolder;

constexpr int noChoice = -1;
constexpr unsigned facesOfBox = 12;

/// The choice of each element of a mesh whose elements have that many faces each and stand one
/// after the other. Corners of one element that differ fail the test.
std::vector<int> ElementChoices(const aiMesh& mesh, unsigned facesPerElement, int count) {
    std::vector<int> choices;
    EXPECT_TRUE(mesh.HasVertexColors(0)) << mesh.mName.C_Str();
    EXPECT_EQ(mesh.mNumFaces % facesPerElement, 0u);
    if (!mesh.HasVertexColors(0))
        return choices;
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
        for (unsigned k = 0; k < mesh.mFaces[f].mNumIndices; ++k) {
            const aiColor4D& color = mesh.mColors[0][mesh.mFaces[f].mIndices[k]];
            const auto decoded = DecodeChoice(color.r, color.g, color.b);
            const int choice = decoded ? decoded->choice : noChoice;
            EXPECT_EQ(decoded ? decoded->count : count, count);
            if (f % facesPerElement == 0 && k == 0)
                choices.push_back(choice);
            EXPECT_EQ(choice, choices.back()) << "face " << f;
        }
    return choices;
}

/// What the map of that seed chooses for the elements 0, 1, ..
std::vector<int> Expected(std::int32_t seed, size_t elements, std::uint32_t maps) {
    std::vector<int> choices;
    for (std::uint32_t e = 0; e < elements; ++e)
        choices.push_back(static_cast<int>(WeightedChoice(maps).Pick(
            RandomKey(seed).With(RandomItem::Element, e).Bits(RandomUse::Choice))));
    return choices;
}

class BakedColors : public ::testing::Test {
  protected:
    /// Bakes and exports the open scene, and reads the file back.
    const aiScene* RoundTrip() {
        Bake();
        const std::wstring file = folder_.Path(L"scene.fbx");
        const simhost::FbxExportResult result = simhost::ExportFbx(file.c_str());
        EXPECT_TRUE(result.ok);
        return Read(TempFolder::Native(file).string());
    }

    const aiScene* Read(const std::string& file) {
        const aiScene* const scene = importer_.ReadFile(file, 0);
        EXPECT_TRUE(scene) << importer_.GetErrorString();
        return scene;
    }

    static std::vector<const aiMesh*> MeshesOf(const aiScene& scene, const char* node) {
        std::vector<const aiMesh*> meshes;
        const aiNode* const found = scene.mRootNode->FindNode(node);
        EXPECT_TRUE(found) << node;
        for (unsigned i = 0; found && i < found->mNumMeshes; ++i)
            meshes.push_back(scene.mMeshes[found->mMeshes[i]]);
        return meshes;
    }

    static void ExpectRoom(const aiScene& scene) {
        const std::vector<const aiMesh*> floor = MeshesOf(scene, "Floor");
        ASSERT_THAT(floor, SizeIs(1));
        const std::vector<int> planks = ElementChoices(*floor[0], facesOfBox, 3);
        ASSERT_THAT(planks, SizeIs(116));
        EXPECT_EQ(planks, Expected(41, planks.size(), 3));
        const int first[] = {0, 2, 1, 2, 0, 2, 2, 1, 1, 1, 0, 0}; // as the document works out
        EXPECT_TRUE(std::equal(std::begin(first), std::end(first), planks.begin()));

        // The books have their three materials in turn; the blue one's has no map that chooses.
        int books = 0;
        for (const aiMesh* const mesh : MeshesOf(scene, "Books")) {
            const std::string material = scene.mMaterials[mesh->mMaterialIndex]->GetName().C_Str();
            SCOPED_TRACE(material);
            const std::vector<int> choices = ElementChoices(*mesh, facesOfBox, 3);
            if (material.find("red") != std::string::npos)
                EXPECT_THAT(choices, ElementsAreArray({2, 1, 0})); // elements 0, 3 and 6
            else if (material.find("green") != std::string::npos)
                EXPECT_THAT(choices, ElementsAreArray({1, 0, 2})); // elements 1, 4 and 7
            else
                EXPECT_THAT(choices, ElementsAreArray({noChoice, noChoice, noChoice}));
            books += static_cast<int>(choices.size());
        }
        EXPECT_EQ(books, 9);
    }

  private:
    TempFolder folder_;
    Assimp::Importer importer_;
};

TEST_F(BakedColors, SampleRoom) {
    const std::wstring room = utf8::ToWide(brimwave::testing::SourcePath("samples/room/room.json"));
    const simhost::LoadResult loaded = simhost::LoadSceneFile(room);
    ASSERT_TRUE(loaded) << loaded.error;
    const aiScene* const scene = RoundTrip();
    ASSERT_TRUE(scene);
    ExpectRoom(*scene);
}

TEST_F(BakedColors, RunOfTheDemo) {
    const char* const file = std::getenv("BRIMWAVE_DEMO_FBX");
    if (!file || !*file)
        GTEST_SKIP() << "BRIMWAVE_DEMO_FBX names no FBX file of the demo";
    const aiScene* const scene = Read(file);
    ASSERT_TRUE(scene);
    ExpectRoom(*scene);
}

TEST_F(BakedColors, TenThousandElementsReadBackAreSpreadEvenly) {
    nlohmann::json scene = EmptyScene();
    scene["nodes"] = {{{"name", "squares"},
                       {"object", Squares(10000)},
                       {"material", Shows(MultiTexture(5, 2, 2026))}}};
    OpenScene(scene);
    const aiScene* const read = RoundTrip();
    ASSERT_TRUE(read);
    const std::vector<const aiMesh*> meshes = MeshesOf(*read, "squares");
    ASSERT_THAT(meshes, SizeIs(1));
    const std::vector<int> choices = ElementChoices(*meshes[0], 2, 5);
    EXPECT_EQ(choices, Expected(2026, 10000, 5));
    std::vector<int> seen(5);
    for (const int choice : choices)
        ++seen.at(static_cast<size_t>(choice));
    double chiSquare = 0;
    for (const int count : seen)
        chiSquare += (count - 2000.0) * (count - 2000.0) / 2000.0;
    EXPECT_LT(chiSquare, 18.47); // chance exceeds it once in a thousand times
    RecordProperty("chi_square", std::to_string(chiSquare));
}

} // namespace
} // namespace brimwave

// What the converter writes, opened by the host for which it is written.
#include "tests/standins/sceneconv/convert_kit.h"
#include "tests/standins/sceneconv/fbx_text.h"

#include "sceneconv/host_classes.h"
#include "simhost/classes/catalogue.h"
#include "simhost/files/scene_file.h"
#include "simhost/scene/scene.h"
#include "text/utf8.h"

#include <gencam.h>
#include <gtest/gtest.h>
#include <max.h>
#include <stdmat.h>

#include <cmath>

namespace sceneconv::testing {

namespace {

/// Converts one shared scene and opens it; places of all nodes are those of the scene file.
class OpenedScene {
  public:
    explicit OpenedScene(const std::filesystem::path& input)
        : view(ConvertFile(input, folder_.Path() / "out.json")) {
        const auto loaded = simhost::LoadSceneFile((folder_.Path() / "out.json").wstring());
        EXPECT_TRUE(loaded) << input << ": " << loaded.error;
    }
    ~OpenedScene() { simhost::Scene::Reset(); }
    OpenedScene(const OpenedScene&) = delete;
    OpenedScene& operator=(const OpenedScene&) = delete;

    [[nodiscard]] INode* Node(const wchar_t* name) const {
        INode* node = GetCOREInterface()->GetINodeByName(name);
        EXPECT_NE(node, nullptr);
        return node;
    }

  private:
    TempFolder folder_;

  public:
    SceneView view;
};

using LoadsInHost = SharedScenesFixture;

/// All nodes below `node`, compared with the file by name where the name is of one node.
int CountAndCompare(INode& node, const SceneView& view) {
    int count = 0;
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        INode* child = node.GetChildNode(i);
        ++count;
        std::string name;
        for (const wchar_t* c = child->GetName(); *c; ++c)
            name += static_cast<char>(*c);
        const Rows wanted = view.WorldOf(name);
        const Matrix3 tm = child->GetNodeTM(0);
        for (int row = 0; row < 4; ++row) {
            const Point3 got = tm.GetRow(row);
            ExpectNear({got.x, got.y, got.z}, wanted[static_cast<std::size_t>(row)],
                       1e-4 * (1 + std::abs(wanted[3][0]) + std::abs(wanted[3][1])),
                       name + " row " + std::to_string(row));
        }
        count += CountAndCompare(*child, view);
    }
    return count;
}

TEST_F(LoadsInHost, EverySharedScene) {
    const std::pair<const char*, int> scenes[] = {
        {"pbr_textures/PBR_Textures.FBX", 6},
        {"engine/2CylinderEngine.FBX", 84},
        {"instances/Instances.FBX", 3},
        {"light_orientation/LightOrientation.gltf", 14},
        {"cameras_and_lights/AnimatedMeshCameraLight.gltf", 48},
        {"missing_texture/RGBMultiplyMap.gltf", 5}};
    for (const auto& [file, nodes] : scenes) {
        const OpenedScene opened(SharedScenes() / file);
        EXPECT_EQ(CountAndCompare(*GetCOREInterface()->GetRootNode(), opened.view), nodes) << file;
    }
}

TEST_F(LoadsInHost, HostMaterialsKeepTheirParametersAndSlots) {
    const OpenedScene opened(SharedScenes() / "pbr_textures/PBR_Textures.FBX");
    Mtl* material = opened.Node(L"SphereBaseColorAlpha")->GetMtl();
    ASSERT_NE(material, nullptr);
    EXPECT_STREQ(material->ClassName(false).data(), L"Physical Material");
    EXPECT_EQ(material->ClassID(), Class_ID(0x3d6b1cec, 0xdeadc001));
    ASSERT_EQ(material->NumParamBlocks(), 1) << "the file's block is the class's own";
    IParamBlock2* block = material->GetParamBlock(0);
    float ior = 0;
    Interval valid = FOREVER;
    const int index = block->GetDesc()->NameToIndex(L"trans_ior");
    ASSERT_GE(index, 0);
    EXPECT_TRUE(block->GetValue(block->GetDesc()->IndextoID(index), 0, ior, valid));
    EXPECT_FLOAT_EQ(ior, 1.52F);
    // What came with later releases is there with its default, as when the host opens an old scene.
    EXPECT_GE(block->GetDesc()->NameToIndex(L"sheen"), 0);
    int filled = 0;
    for (int i = 0; i < material->NumSubTexmaps(); ++i) {
        auto* bitmap = dynamic_cast<BitmapTex*>(material->GetSubTexmap(i));
        filled += bitmap ? 1 : 0;
        if (bitmap)
            EXPECT_TRUE(std::wstring(bitmap->GetMapName()).starts_with(L"D:\\"));
    }
    EXPECT_EQ(filled, 2) << "base colour and transparency";
}

TEST_F(LoadsInHost, CamerasAndSharedObjects) {
    {
        const OpenedScene opened(SharedScenes() /
                                 "cameras_and_lights/AnimatedMeshCameraLight.gltf");
        auto* camera = dynamic_cast<GenCamera*>(opened.Node(L"UserCamera")->EvalWorldState(0).obj);
        ASSERT_NE(camera, nullptr);
        Interval valid = FOREVER;
        EXPECT_NEAR(camera->GetFOV(0, valid), 0.785398, 1e-4);
        EXPECT_EQ(camera->GetManualClip(), 1);
    }
    const OpenedScene opened(SharedScenes() / "instances/Instances.FBX");
    EXPECT_EQ(opened.Node(L"MasterBox")->GetObjectRef(),
              opened.Node(L"InstanceBox1")->GetObjectRef());
}

/// The host exports what it opened, and the converter reads that: the same scene again.
TEST_F(LoadsInHost, AndComesBackFromItsExport) {
    for (const char* file :
         {"pbr_textures/PBR_Textures.FBX", "instances/Instances.FBX",
          "light_orientation/LightOrientation.gltf",
          "cameras_and_lights/AnimatedMeshCameraLight.gltf", "engine/2CylinderEngine.FBX"}) {
        const OpenedScene opened(SharedScenes() / file);
        const TempFolder folder;
        const std::filesystem::path exported = folder.Path() / "again.fbx";
        ASSERT_TRUE(GetCOREInterface()->ExportToFile(exported.wstring().c_str(), TRUE));
        const SceneView again = ConvertFile(exported, folder.Path() / "again.json");
        EXPECT_EQ(again.json["nodes"].size(), opened.view.json["nodes"].size()) << file;
        EXPECT_EQ(again.json["units"], opened.view.json["units"]) << file;
        for (const Json& node : opened.view.json["nodes"]) {
            const std::string name = node["name"];
            const Rows wanted = opened.view.WorldOf(name);
            const Rows got = again.WorldOf(name);
            for (std::size_t row = 0; row < 4; ++row) {
                ExpectNear(got[row], wanted[row], 1e-3 * (1 + std::abs(wanted[row][0])),
                           std::string(file) + " " + name + " row " + std::to_string(row));
            }
            const auto classOf = [&](const SceneView& view) {
                const Json& object = view.Object(name);
                return object.is_object() ? object["class"].get<std::string>() : std::string();
            };
            EXPECT_EQ(classOf(again), classOf(opened.view)) << file << " " << name;
            EXPECT_EQ(again.Node(name).value("material", Json()).is_null(),
                      node.value("material", Json()).is_null())
                << file << " " << name;
        }
    }
}

TEST(HostClasses, EveryOneOfTheHostIsKnownByItsIds) {
    std::vector<simhost::ClassPtr> classes;
    std::string objects;
    for (const simhost::ClassPtr& info : simhost::AllClasses()) {
        const auto kind = static_cast<int>(info->kind);
        if (kind != MATERIAL_CLASS_ID && kind != LIGHT_CLASS_ID && kind != CAMERA_CLASS_ID)
            continue;
        classes.push_back(info);
        objects += HostMaterial(300 + static_cast<int>(classes.size()), "M",
                                ClassOf(info->classId.PartA(), info->classId.PartB(), kind));
    }
    ASSERT_GT(classes.size(), 50U);
    const FbxDocument document(Fbx(objects, {}));
    for (size_t i = 0; i < classes.size(); ++i) {
        const FbxObject* object = document.Find(301 + static_cast<int>(i));
        ASSERT_NE(object, nullptr);
        const auto known = HostClassOf(*object);
        ASSERT_TRUE(known);
        std::string name = utf8::FromWide(classes[i]->name);
        if (name == "Standard")
            name = "Standard (Legacy)"; // its name in older hosts
        EXPECT_EQ(known->name, name);
    }
}

/// Every class that is known by its ids, with a parameter that it has and one that it lacks.
TEST(HostClasses, AreThoseOfTheHost) {
    constexpr int material = 0xc00;
    constexpr int light = 0x30;
    constexpr int camera = 0x20;
    const struct {
        std::uint32_t a, b;
        int super;
        const wchar_t* name;
    } classes[] = {
        {0x2, 0, material, L"Standard (Legacy)"},
        {0x100, 0, material, L"Top/Bottom"},
        {0x200, 0, material, L"Multi/Sub-Object"},
        {0x210, 0, material, L"Double Sided"},
        {0x250, 0, material, L"Blend"},
        {0x255, 0, material, L"Shell Material"},
        {0x260, 0, material, L"Matte/Shadow"},
        {0x27190ff4, 0x329b106e, material, L"Raytrace"},
        {0x272c0d4b, 0x432a414b, material, L"XRef Material"},
        {0x3d6b1cec, 0xdeadc001, material, L"Physical Material"},
        {0x61dc0cd7, 0x13640af6, material, L"Composite"},
        {0x6912ab89, 0x87151720, material, L"\rCoronaPhysicalMtl"},
        {0x70be6506, 0x448931dd, material, L"CoronaLegacyMtl"},
        {0x53b7717a, 0x500d5093, material, L"CoronaLightMtl"},
        {0x65486584, 0x8425554e, material, L"CoronaLayeredMtl"},
        {0x37bf3f2f, 0x7034695c, material, L"VRayMtl"},
        {0x38420192, 0x45fe4e1b, material, L"glTF Material"},
        {0x12345678, 0x9abcdef0, material, L"Class 0x12345678,0x9abcdef0"},
        {0x1011, 0, light, L"Omni"},
        {0x1012, 0, light, L"Target Spot"},
        {0x1013, 0, light, L"Free Direct"},
        {0x1014, 0, light, L"Free Spot"},
        {0x1015, 0, light, L"Target Direct"},
        {0x7bf61478, 0x522e4705, light, L"Skylight"},
        {0x423045e5, 0x294c5879, light, L"CoronaLight"},
        {0x12345678, 1, light, L"Class 0x12345678,0x00000001"},
        {0x1001, 0, camera, L"Free"},
        {0x1002, 0, camera, L"Target"},
        {0x46697218, 0x28e8008d, camera, L"Physical"},
    };
    for (const auto& c : classes) {
        const std::string params = ClassOf(c.a, c.b, c.super) +
                                   P("3dsMax|Own|some Texmap", "Reference", "") +
                                   P("3dsMax|Own|some value", "Float", "3");
        const bool isMaterial = c.super == material;
        const std::string held = isMaterial ? Mesh(100, 0, 0) + HostMaterial(300, "M", params)
                                            : Object("NodeAttribute", 300, "",
                                                     c.super == light ? "Light" : "Camera", params);
        std::vector<Link> links = {{200, 0, ""}, {300, 200, ""}};
        if (isMaterial)
            links.push_back({100, 200, ""});
        const TempFolder folder;
        const OpenedScene opened(folder.Write("a.fbx", Fbx(Model(200, "N",
                                                                 isMaterial         ? "Mesh"
                                                                 : c.super == light ? "Light"
                                                                                    : "Camera") +
                                                               held,
                                                           links)));
        INode* node = opened.Node(L"N");
        ASSERT_NE(node, nullptr);
        auto* thing = isMaterial ? static_cast<ReferenceTarget*>(node->GetMtl())
                                 : static_cast<ReferenceTarget*>(node->GetObjectRef());
        ASSERT_NE(thing, nullptr);
        EXPECT_STREQ(thing->ClassName(false).data(), c.name);
        EXPECT_TRUE(thing->ClassID() == Class_ID(c.a, c.b)) << c.a;
        EXPECT_EQ(static_cast<int>(thing->SuperClassID()), c.super) << c.a;
    }
}

} // namespace

} // namespace sceneconv::testing

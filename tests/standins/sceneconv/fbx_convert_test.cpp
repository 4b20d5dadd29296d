// FBX files of the host, written here as text.
#include "tests/standins/sceneconv/convert_kit.h"
#include "tests/standins/sceneconv/fbx_text.h"

#include "sceneconv/fbx_records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sceneconv::testing {

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

TEST(FbxNodes, KeepNamesPivotsAndOffsets) {
    const SceneView scene = ConvertText(
        "häuser.fbx",
        Fbx(Mesh(100, 0, 0) + Mesh(101, 0, 0) +
                Model(200, "Box", "Mesh",
                      P("PreRotation", "Vector3D", "-90,0,0") +
                          P("Lcl Translation", "Lcl Translation", "1,2,3") +
                          P("Lcl Scaling", "Lcl Scaling", "2,2,2") +
                          P("GeometricTranslation", "Vector3D", "5,0,0") + P("Show", "bool", "0") +
                          P("UDP3DSMAX", "KString", "\"a = 1&cr;&lf;b\"")) +
                Model(201, "Box", "Mesh",
                      P("Lcl Translation", "Lcl Translation", "0,0,10") +
                          P("RotationPivot", "Vector3D", "1,0,0") +
                          P("Lcl Rotation", "Lcl Rotation", "0,0,90")),
            {{200, 0, ""}, {201, 200, ""}, {100, 200, ""}, {101, 201, ""}}));
    ASSERT_EQ(scene.json["nodes"].size(), 2U);
    EXPECT_EQ(scene.json["file_name"], "C:\\Scenes\\häuser.max");
    const Json& outer = scene.json["nodes"][0];
    const Json& inner = scene.json["nodes"][1];
    EXPECT_EQ(outer["name"], "Box");
    EXPECT_EQ(inner["name"], "Box");
    EXPECT_NE(outer["id"], inner["id"]); // a name of two nodes is no id
    EXPECT_EQ(inner["parent"], outer["id"]);
    EXPECT_EQ(outer["hidden"], true);
    EXPECT_EQ(outer["user_props"], "a = 1\r\nb");
    EXPECT_EQ(outer["object"], inner["object"]) << "equal meshes are instances";

    // y up becomes z up, and the object's offset is not handed down to the child
    ExpectNear(scene.World(outer)[3], {1, -3, 2}, 1e-9, "outer");
    ExpectNear(outer["object_offset"]["matrix"][3].get<std::array<double, 3>>(), {5, 0, 0}, 1e-9,
               "offset");
    ExpectNear(scene.World(outer)[2], {0, 0, 2}, 1e-9, "outer z");
    // turned about the pivot (1,0,0): the origin goes to (1,-1,0), then up by 10 in the parent
    ExpectNear(scene.World(inner)[3], {1 + 2 * 1, -3 - 2 * 1, 2 + 2 * 10}, 1e-9, "inner");
    EXPECT_FALSE(inner.contains("object_offset"));
}

TEST(FbxNodes, AxesAndUnits) {
    const struct {
        std::string settings;
        std::array<double, 3> position; ///< of (1,2,3)
        std::string unit;
        double scale;
    } cases[] = {
        {P("UpAxis", "int", "2") + P("FrontAxis", "int", "1") + P("FrontAxisSign", "int", "-1") +
             P("UnitScaleFactor", "double", "2.54"),
         {1, 2, 3},
         "inches",
         1},
        {P("UpAxis", "int", "1") + P("UnitScaleFactor", "double", "100"), {1, -3, 2}, "meters", 1},
        {P("UpAxis", "int", "0") + P("CoordAxis", "int", "1") + P("CoordAxisSign", "int", "-1") +
             P("UnitScaleFactor", "double", "7"),
         {-2, -3, 1},
         "centimeters",
         7},
        {P("UnitScaleFactor", "double", "-1"), {1, -3, 2}, "centimeters", 1},
    };
    for (const auto& c : cases) {
        const SceneView scene = ConvertText(
            "a.fbx", Fbx(Mesh(100, 0, 0) + Model(200, "N", "Mesh",
                                                 P("Lcl Translation", "Lcl Translation", "1,2,3")),
                         {{200, 0, ""}, {100, 200, ""}}, c.settings));
        ExpectNear(scene.WorldOf("N")[3], c.position, 1e-9, c.settings);
        EXPECT_EQ(scene.json["units"]["type"], c.unit);
        EXPECT_EQ(scene.json["units"]["scale"], c.scale);
    }
}

TEST(FbxMeshes, PiecesBecomeOneMeshWithTheFilesMaterialIds) {
    // The quad has the second material; both materials have one name.
    const SceneView scene = ConvertText(
        "a.fbx",
        Fbx(Mesh(100, 1, 0) + Model(200, "Box", "Mesh") +
                HostMaterial(400, "A", ClassOf(1, 1, 3072) + P("3dsMax|B|x", "Float", "1")) +
                HostMaterial(401, "A", ClassOf(1, 1, 3072) + P("3dsMax|B|x", "Float", "2")),
            {{200, 0, ""}, {100, 200, ""}, {400, 200, ""}, {401, 200, ""}}));
    const Json& mesh = scene.Object("Box")["mesh"];
    EXPECT_EQ(mesh["positions"].size(), 15U);
    EXPECT_EQ(mesh["triangles"], Json({0, 1, 2, 0, 2, 3, 1, 4, 2}));
    EXPECT_EQ(mesh["material_ids"], Json({1, 1, 0}));
    EXPECT_EQ(mesh["visible_edges"], Json({3, 6, 7})) << "the quad's diagonal is hidden";
    ASSERT_TRUE(mesh["uvs"].contains("3")) << "the channel is the one in the set's name";

    const Json& multi = scene.Material(scene.Node("Box")["material"]);
    EXPECT_EQ(multi["class"], "Multi/Sub-Object");
    ASSERT_EQ(multi["sub_materials"].size(), 2U);
    EXPECT_EQ(scene.Param(multi["sub_materials"][0], "x"), 1);
    EXPECT_EQ(scene.Param(multi["sub_materials"][1], "x"), 2);
}

TEST(FbxMaterials, EveryHostPropertyBecomesAParameterOfItsBlock) {
    const std::string name = "Wand \"1\"";
    const SceneView scene = ConvertText(
        "a.fbx",
        Fbx(Mesh(100, 0, 0) + Model(200, "Box", "Mesh") +
                HostMaterial(
                    400, "Wand &quot;1&quot;",
                    ClassOf(0x6912ab89, 0x87151720, 3072) +
                        P("3dsMax|CoronaPhysicalMtlPb", "Compound", "") +
                        P("3dsMax|CoronaPhysicalMtlPb|baseLevel", "Float", "0.25") +
                        P("3dsMax|CoronaPhysicalMtlPb|iorMode", "Integer", "1") +
                        P("3dsMax|CoronaPhysicalMtlPb|useThinMode", "Bool", "1") +
                        P("3dsMax|CoronaPhysicalMtlPb|baseColor", "Color", "1,0.5,0") +
                        P("3dsMax|CoronaPhysicalMtlPb|tint", "ColorAndAlpha", "1,0,0,0.5") +
                        P("3dsMax|CoronaPhysicalMtlPb|at", "Vector3D", "1,2,3", "Vector") +
                        P("3dsMax|CoronaPhysicalMtlPb|label", "KString", "\"ä\"") +
                        P("3dsMax|CoronaPhysicalMtlPb|weights|0", "Float", "1") +
                        P("3dsMax|CoronaPhysicalMtlPb|weights|1", "Float", "2") +
                        P("3dsMax|CoronaPhysicalMtlPb|baseTexmap", "Reference", "") +
                        P("3dsMax|CoronaPhysicalMtlPb|bumpTexmap", "Reference", "") +
                        P("3dsMax|Other|baseMtl", "Reference", "")) +
                HostMaterial(401, "Inner", ClassOf(0x3d6b1cec, 0xdeadc001, 3072)) +
                Object("Texture", 500, "Holz", "",
                       P("UVSet", "KString", "\"UVChannel_2\"") +
                           P("Scaling", "Vector3D", "2,3,1") + P("WrapModeU", "enum", "1"),
                       "FileName: \"D:\\holz\\Holz.jpg\"\nRelativeFilename: \"holz\\Holz.jpg\"\n"),
            {{200, 0, ""},
             {100, 200, ""},
             {400, 200, ""},
             {500, 400, "3dsMax|CoronaPhysicalMtlPb|baseTexmap"},
             {500, 400, "3dsMax|CoronaPhysicalMtlPb|undeclaredTexmap"},
             {401, 400, "3dsMax|Other|baseMtl"},
             {400, 401, "3dsMax|Ring|baseMtl"}}));
    const Json& material = scene.Material(name);
    EXPECT_EQ(material["class"], "\rCoronaPhysicalMtl");
    const Json wanted = Json::parse(R"([
      {"name": "CoronaPhysicalMtlPb", "params": [
        {"name": "baseLevel", "type": "float", "value": 0.25},
        {"name": "iorMode", "type": "int", "value": 1},
        {"name": "useThinMode", "type": "bool", "value": true},
        {"name": "baseColor", "type": "rgba", "value": [1.0, 0.5, 0.0]},
        {"name": "tint", "type": "frgba", "value": [1.0, 0.0, 0.0, 0.5]},
        {"name": "at", "type": "point3", "value": [1.0, 2.0, 3.0]},
        {"name": "label", "type": "string", "value": "ä"},
        {"name": "weights", "type": "float_tab", "value": [1.0, 2.0]},
        {"name": "baseTexmap", "type": "texmap", "value": "Holz"},
        {"name": "bumpTexmap", "type": "texmap", "value": null},
        {"name": "undeclaredTexmap", "type": "texmap", "value": "Holz"}]},
      {"name": "Other", "params": [{"name": "baseMtl", "type": "mtl", "value": "Inner"}]}])");
    EXPECT_EQ(material["blocks"], wanted);
    EXPECT_EQ(scene.Param("Inner", "baseMtl"), name) << "materials may refer in rings";

    const Json& map = scene.json["maps"]["Holz"];
    EXPECT_EQ(map["file"], "D:\\holz\\Holz.jpg") << "kept though the file is missing";
    EXPECT_EQ(
        map["sub_objects"]["uvgen"]["params"],
        Json::parse(R"({"U_Tiling": 2.0, "V_Tiling": 3.0, "U_Tile": false, "mapChannel": 2})"));
    EXPECT_THAT(scene.warnings, Contains(HasSubstr("texture not found")));
}

TEST(FbxMaterials, AnUnknownClassKeepsItsIdsAndGetsSlots) {
    const SceneView scene =
        ConvertText("a.fbx", Fbx(Mesh(100, 0, 0) + Model(200, "Box", "Mesh") +
                                     HostMaterial(400, "M",
                                                  ClassOf(0x12345678, 0x9abcdef0, 3072) +
                                                      P("3dsMax|B|tex", "Reference", "") +
                                                      P("3dsMax|B|texOn", "Bool", "0")),
                                 {{200, 0, ""}, {100, 200, ""}, {400, 200, ""}}));
    const Json& material = scene.Material("M");
    EXPECT_EQ(material["class"], "Class 0x12345678,0x9abcdef0");
    EXPECT_EQ(material["class_id"], Json({0x12345678U, 0x9abcdef0U}));
    EXPECT_EQ(material["slot_list"],
              Json::parse(R"([{"name": "tex", "param": "tex", "on_param": "texOn"}])"));
}

TEST(FbxCameras, StandAndLookAsInTheFile) {
    // The host's exporter turns a camera by its post-rotation; the target tells the direction.
    const SceneView scene = ConvertText(
        "a.fbx",
        Fbx(Model(202, "Kamera", "Camera",
                  P("Lcl Translation", "Lcl Translation", "0,0,100") +
                      P("PostRotation", "Vector3D", "0,-90,0")) +
                Model(203, "Ziel", "Null") +
                Model(204, "Auf Kamera", "Null", P("Lcl Translation", "Lcl Translation", "5,0,0")) +
                Object("NodeAttribute", 300, "", "Camera",
                       P("FieldOfView", "FieldOfView", "60") + P("ApertureMode", "enum", "1") +
                           P("NearPlane", "double", "1") + P("FarPlane", "double", "200"),
                       "TypeFlags: \"Camera\"\n"),
            {{202, 0, ""},
             {203, 0, ""},
             {204, 202, ""},
             {300, 202, ""},
             {203, 202, "LookAtProperty"}}));
    const Json& camera = scene.Object("Kamera");
    EXPECT_EQ(camera["class"], "Target");
    EXPECT_NEAR(camera["camera"]["fov"], 1.04719755, 1e-6);
    EXPECT_EQ(camera["camera"]["target_distance"], 100);
    EXPECT_EQ(camera["camera"]["manual_clip"], true);
    EXPECT_EQ(scene.Node("Kamera")["target"], "Ziel");
    EXPECT_FALSE(scene.Node("Ziel").contains("object")) << "the host makes the target's object";
    const Rows world = scene.WorldOf("Kamera");
    ExpectNear(world[3], {0, -100, 0}, 1e-9, "position");
    ExpectNear(world[2], {0, -1, 0}, 1e-9, "z: the camera looks along -z, to the target");
    ExpectNear(world[1], {0, 0, 1}, 1e-9, "y: up");
    // FBX cameras look along +x: the child's 5 in front of the camera stays in front of it
    ExpectNear(scene.WorldOf("Auf Kamera")[3], {0, -95, 0}, 1e-9, "child");
}

TEST(FbxLights, OfTheHostKeepTheirClassAndParameters) {
    const SceneView scene = ConvertText(
        "a.fbx", Fbx(Model(200, "Sonne", "Light",
                           P("PreRotation", "Vector3D", "-90,0,0") +
                               P("PostRotation", "Vector3D", "-90,0,0")) +
                         Model(201, "Spot", "Light", P("Lcl Rotation", "Lcl Rotation", "0,0,90")) +
                         Object("NodeAttribute", 300, "", "Light",
                                ClassOf(0x1013, 0, 48) +
                                    P("3dsMax|ParamBlock_0|Multiplier", "Float", "1.5")) +
                         Object("NodeAttribute", 301, "", "Light",
                                P("LightType", "enum", "2") + P("Intensity", "Number", "200") +
                                    P("OuterAngle", "Number", "90") + P("Color", "Color", "1,0,0")),
                     {{200, 0, ""}, {201, 0, ""}, {300, 200, ""}, {301, 201, ""}}));
    const Json& sun = scene.Object("Sonne");
    EXPECT_EQ(sun["class"], "Free Direct");
    EXPECT_EQ(sun["blocks"][0]["params"][0], Json::parse(R"({"name": "Multiplier", "type": "float",
                                                             "value": 1.5})"));
    ExpectNear(scene.WorldOf("Sonne")[2], {0, 0, 1}, 1e-9, "straight down, as in the host");
    const Json& spot = scene.Object("Spot");
    EXPECT_EQ(spot["class"], "CoronaLight");
    EXPECT_EQ(spot["params"]["intensity"], 3000);
    EXPECT_NEAR(spot["params"]["directionality"], 0.5, 1e-9);
    // -y of the file, turned by 90 degrees about z: towards +x
    ExpectNear(scene.WorldOf("Spot")[2], {-1, 0, 0}, 1e-9, "spot");
}

TEST(FbxRecords, DamageIsToldNotFollowed) {
    using sceneconv::ReadFbxRecords;
    const std::string magic("Kaydara FBX Binary  \0\x1a\0\xe8\x1c\0\0", 27);
    const auto number = [](std::uint32_t n) {
        return std::string(reinterpret_cast<const char*>(&n), 4);
    };
    // end, value count, value bytes, name
    const std::string damaged[] = {
        magic + number(1000) + number(0) + number(0) + "\1A",
        magic + number(41) + number(0x7fffffff) + number(0) + "\1A",
        magic + number(45) + number(1) + number(4) + "\1AS" + number(0xffffffff),
        magic + number(60) + number(1) + number(13) + "\1Ad" + number(0xffffffff) + number(0) +
            number(0) + "12345",
        magic + number(5) + number(0) + number(0) + "\1A",
        "; FBX 7.4.0 project file\nA: \"open",
        "; FBX 7.4.0 project file\nA: { B: 1",
        "; FBX 7.4.0 project file\nA: *3 { a: 1",
    };
    for (const std::string& bytes : damaged)
        EXPECT_THROW((void)ReadFbxRecords(bytes), std::runtime_error) << bytes;
    std::string deep = "; FBX 7.4.0 project file\n";
    for (int i = 0; i < 100000; ++i)
        deep += "A: {";
    EXPECT_THROW((void)ReadFbxRecords(deep), std::runtime_error);

    const auto records = ReadFbxRecords(magic + number(46) + number(1) + number(5) + "\1AI" +
                                        number(0xfffffff9) + std::string(13, '\0'));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].name, "A");
    EXPECT_EQ(records[0].Integer(0), -7);
    // from 7.5 on the three numbers are twice as wide
    const auto wide = [&](std::uint32_t n) { return number(n) + number(0); };
    const auto later = ReadFbxRecords(magic.substr(0, 23) + number(7500) + wide(58) + wide(1) +
                                      wide(5) + "\1AI" + number(9) + std::string(25, '\0'));
    ASSERT_EQ(later.size(), 1U);
    EXPECT_EQ(later[0].Integer(0), 9);
}

} // namespace

} // namespace sceneconv::testing

#include "tests/standins/sceneconv/convert_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sceneconv::testing {

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

TEST(ObjFiles, BecomePhysicalMaterialsAndOneMeshEach) {
    const TempFolder folder;
    folder.Write("holz/Wand.PNG", "x");
    folder.Write("a.mtl", "newmtl rot\nKd 1 0 0\nKs 0.5 0.5 0.5\nNs 100\nmap_Kd holz/wand.png\n"
                          "newmtl glas\nKd 0 1 0\nd 0.25\nNi 1.5\nmap_Bump fehlt/bump.png\n");
    const SceneView scene = ConvertFile(
        folder.Write("a.obj",
                     "mtllib a.mtl\no W\xfcrfel\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 1 0 1\n"
                     "v 0 0 1\nusemtl rot\nf 1 2 3 4\nusemtl glas\nf 1 2 5 6\n"
                     "o Linie\nl 1 2\n"),
        folder.Path() / "out.json");
    EXPECT_EQ(scene.json["nodes"][0]["name"], "Würfel") << "Latin-1 names become UTF-8";
    const Json& mesh = scene.Object("Würfel")["mesh"];
    EXPECT_EQ(mesh["positions"].size(), 18U);
    EXPECT_EQ(mesh["material_ids"], Json({0, 0, 1, 1}));
    EXPECT_EQ(mesh["visible_edges"], Json({3, 6, 3, 6}));
    ExpectNear(scene.WorldOf("Würfel")[1], {0, 0, 1}, 1e-9, "y is up");
    EXPECT_EQ(scene.Object("Linie")["class"], "Dummy");
    EXPECT_THAT(scene.warnings, Contains(HasSubstr("points and lines")));

    EXPECT_EQ(scene.Material("rot")["class"], "Physical Material");
    EXPECT_EQ(scene.Param("rot", "base_color"), Json({1.0, 0.0, 0.0, 1.0}));
    EXPECT_NEAR(scene.Param("rot", "roughness"), 0.14, 0.001);
    EXPECT_EQ(scene.Param("glas", "transparency"), 0.75);
    EXPECT_EQ(scene.Param("glas", "trans_ior"), 1.5);
    const auto file = [&](const char* material, const char* slot) {
        return scene.json["maps"][scene.Param(material, slot).get<std::string>()]["file"];
    };
    EXPECT_EQ(file("rot", "base_color_map"), "holz/wand.png");
    EXPECT_EQ(file("glas", "bump_map"), "fehlt/bump.png");
    EXPECT_EQ(scene.json["map_paths"], Json({"holz"}))
        << "letter case does not count, as in the host";
    EXPECT_THAT(scene.warnings, Contains("texture not found: fehlt/bump.png"));
}

TEST(ColladaFiles, KeepNamesUnitAndUpAxis) {
    const SceneView scene = ConvertText("a.dae", R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><unit name="inch" meter="0.0254"/><up_axis>Z_UP</up_axis></asset>
<library_cameras><camera id="c" name="c"><optics><technique_common><perspective><xfov>60</xfov>
<aspect_ratio>1.5</aspect_ratio><znear>1</znear><zfar>1000</zfar></perspective>
</technique_common></optics></camera></library_cameras>
<library_geometries><geometry id="g"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 1 0 0 1 1 0</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/>
<param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles>
</mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s">
<node id="n1" name="Platte 1"><translate>1 2 3</translate><instance_geometry url="#g"/></node>
<node id="n2" name="Platte 2"><instance_geometry url="#g"/></node>
<node id="n3" name="Kamera"><translate>0 -5 0</translate><rotate>1 0 0 90</rotate>
<instance_camera url="#c"/></node>
</visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>)");
    EXPECT_EQ(scene.json["units"]["type"], "inches");
    EXPECT_EQ(scene.json["nodes"].size(), 3U);
    const Rows plate = scene.WorldOf("Platte 1");
    ExpectNear(plate[3], {1, 2, 3}, 1e-6, "position");
    ExpectNear(plate[1], {0, 1, 0}, 1e-6, "axis");
    EXPECT_EQ(scene.Node("Platte 1")["object"], scene.Node("Platte 2")["object"]);
    EXPECT_EQ(scene.Node("Platte 1")["material"], nullptr);
    const Rows camera = scene.WorldOf("Kamera");
    ExpectNear(camera[3], {0, -5, 0}, 1e-6, "camera");
    ExpectNear(camera[2], {0, -1, 0}, 1e-6, "looks along +y");
    EXPECT_NEAR(scene.Object("Kamera")["camera"]["fov"], 1.0471976, 1e-6);
    EXPECT_EQ(scene.Object("Kamera")["camera"]["far"], 1000);
}

TEST(LongMeshes, ArePacked) {
    std::string obj = "o Gitter\n";
    for (int i = 0; i < 200; ++i)
        obj += "v " + std::to_string(i) + " 0.5 0\n";
    for (int i = 1; i < 199; ++i) {
        obj += "f " + std::to_string(i) + " " + std::to_string(i + 1) + " " +
               std::to_string(i + 2) + "\n";
    }
    const SceneView scene = ConvertText("a.obj", obj);
    const Json& mesh = scene.Object("Gitter")["mesh"];
    // 600 floats; the first three are 0, 0.5, 0
    EXPECT_EQ(mesh["positions"]["base64"].get<std::string>().size(), 3200U);
    EXPECT_EQ(mesh["positions"]["base64"].get<std::string>().substr(0, 16), "AAAAAAAAAD8AAAAA");
    EXPECT_EQ(mesh["triangles"]["base64"].get<std::string>().substr(0, 16), "AAAAAAEAAAACAAAA");
}

} // namespace

} // namespace sceneconv::testing

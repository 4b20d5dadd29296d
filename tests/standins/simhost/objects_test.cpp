#include "scene_kit.h"

#include "simhost/scene/derived_object.h"

namespace {

using Objects = SceneTest;

Object* ObjectOf(const wchar_t* node) {
    return NodeNamed(node)->EvalWorldState(0).obj;
}

struct Box3 {
    Point3 min{1e9f, 1e9f, 1e9f}, max{-1e9f, -1e9f, -1e9f};
};

/// Converts, measures, and frees what the conversion made.
Box3 Measure(Object* object, int* faces = nullptr) {
    Box3 box;
    auto* tri = dynamic_cast<TriObject*>(object->ConvertToType(0, triObjectClassID));
    EXPECT_TRUE(tri);
    if (!tri)
        return box;
    const Mesh& mesh = tri->GetMesh();
    for (int i = 0; i < mesh.getNumVerts(); ++i)
        for (int k = 0; k < 3; ++k) {
            box.min[k] = std::min(box.min[k], mesh.getVert(i)[k]);
            box.max[k] = std::max(box.max[k], mesh.getVert(i)[k]);
        }
    if (faces)
        *faces = mesh.getNumFaces();
    if (tri != object)
        tri->MaybeAutoDelete();
    return box;
}

/// Volume that the faces enclose; positive when they look outwards.
double Volume(Object* object) {
    auto* tri = dynamic_cast<TriObject*>(object->ConvertToType(0, triObjectClassID));
    double volume = 0;
    for (int i = 0; i < tri->mesh.getNumFaces(); ++i) {
        const DWORD* v = tri->mesh.faces[i].v;
        volume += DotProd(tri->mesh.verts[v[0]],
                          CrossProd(tri->mesh.verts[v[1]], tri->mesh.verts[v[2]])) /
                  6.0;
    }
    if (tri != object)
        tri->MaybeAutoDelete();
    return volume;
}

constexpr const char* mesh = R"({"positions": [[0,0,0],[1,0,0],[0,1,0],[0,0,1]],
   "triangles": [0,2,1, 0,1,3], "material_ids": [2, 0], "smoothing_groups": 4,
   "uvs": {"1": {"values": [[0,0],[1,0],[0,1],[1,1]]}, "3": {"values": [0,0,0.5], "size": 3, "triangles": [0,0,0,0,0,0]}},
   "colors": {"values": [1,0,0, 0,1,0], "triangles": [0,0,0, 1,1,1]},
   "normals": {"values": [[0,0,-1],[0,-1,0]], "triangles": [0,0,0, 1,1,1]}})";

TEST_F(Objects, OnlyAConversionMakesSomethingNew) {
    OpenScene(
        std::string(R"("nodes": [{"name": "mesh", "object": {"class": "Editable Mesh", "mesh": )") +
        mesh + R"(}}, {"name": "poly", "object": {"class": "Editable Poly", "mesh": )" + mesh +
        R"(}}, {"name": "box", "object": {"class": "Box"}},
                 {"name": "not", "object": {"class": "CoronaProxy"}}, {"name": "light", "object": {"class": "Omni"}}])");
    Object* plain = ObjectOf(L"mesh");
    EXPECT_EQ(plain->ConvertToType(0, triObjectClassID), plain);
    plain->MaybeAutoDelete(); // what careless callers do: nothing is lost
    EXPECT_EQ(ObjectOf(L"mesh"), plain);
    for (const wchar_t* name : {L"poly", L"box"}) {
        Object* object = ObjectOf(name);
        EXPECT_TRUE(object->CanConvertToType(triObjectClassID));
        Object* made = object->ConvertToType(0, triObjectClassID);
        EXPECT_NE(made, object);
        EXPECT_EQ(simhost::ResultMesh::LiveTemporaries(), 1);
        made->MaybeAutoDelete();
        EXPECT_EQ(simhost::ResultMesh::LiveTemporaries(), 0);
    }
    for (const wchar_t* name : {L"not", L"light"}) {
        EXPECT_FALSE(ObjectOf(name)->CanConvertToType(triObjectClassID));
        EXPECT_EQ(ObjectOf(name)->ConvertToType(0, triObjectClassID), nullptr);
    }
}

TEST_F(Objects, MeshesOfTheFileArriveWhole) {
    OpenScene(
        std::string(R"("nodes": [{"name": "m", "object": {"class": "Editable Mesh", "mesh": )") +
        mesh + "}}]");
    Mesh& m = dynamic_cast<TriObject*>(ObjectOf(L"m"))->mesh;
    EXPECT_EQ(m.getNumVerts(), 4);
    ASSERT_EQ(m.getNumFaces(), 2);
    EXPECT_EQ(m.getFaceMtlIndex(0), 2);
    EXPECT_EQ(m.faces[1].getSmGroup(), 4u);
    EXPECT_EQ(m.tVerts[3], Point3(1, 1, 0));
    EXPECT_EQ(m.tvFace[1].t[2], 3u);
    EXPECT_EQ(m.Map(3).tv[0].z, 0.5f);
    EXPECT_EQ(m.vertCol[m.vcFace[1].t[0]], Point3(0, 1, 0));
    EXPECT_EQ(m.GetSpecifiedNormals()->Normal(m.GetSpecifiedNormals()->Face(1).GetNormalID(2)),
              Point3(0, -1, 0));
}

TEST_F(Objects, Base64ListsAreTheSameAsWrittenOnes) {
    OpenScene(R"("nodes": [{"name": "m", "object": {"class": "Editable Mesh", "mesh": {
      "positions": {"base64": "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}, "triangles": {"base64": "AAAAAAEAAAACAAAA"},
      "material_ids": {"base64": "BQAAAA=="}}}}])");
    Mesh& m = dynamic_cast<TriObject*>(ObjectOf(L"m"))->mesh;
    ASSERT_EQ(m.getNumVerts(), 3);
    EXPECT_EQ(m.getVert(1), Point3(1, 0, 0));
    EXPECT_EQ(m.getVert(2), Point3(0, 1, 0));
    EXPECT_EQ(m.getFaceMtlIndex(0), 5);
}

TEST_F(Objects, PrimitivesHaveTheirSizeAndLookOutwards) {
    struct Case {
        const char* json;
        Point3 min, max;
        double volume;
        double tolerance;
    };
    const double pi = 3.14159265;
    const Case cases[] = {
        {R"("Box", "params": {"length": 4, "width": 2, "height": 6})",
         {-1, -2, 0},
         {1, 2, 6},
         48,
         0.01},
        {R"("Sphere", "params": {"radius": 3, "segs": 64})",
         {-3, -3, -3},
         {3, 3, 3},
         36 * pi,
         0.02},
        {R"("Cylinder", "params": {"radius": 2, "height": 5, "sides": 64})",
         {-2, -2, 0},
         {2, 2, 5},
         20 * pi,
         0.02},
        {R"("Cone", "params": {"radius1": 3, "radius2": 0, "height": 4, "sides": 64})",
         {-3, -3, 0},
         {3, 3, 4},
         12 * pi,
         0.02},
        {R"("Torus", "params": {"radius1": 10, "radius2": 2, "segs": 64, "sides": 64})",
         {-12, -12, -2},
         {12, 12, 2},
         80 * pi * pi,
         0.02},
        {R"("Plane", "params": {"length": 4, "width": 2})", {-1, -2, 0}, {1, 2, 0}, 0, 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.json);
        OpenScene(std::string(R"("nodes": [{"name": "p", "object": {"class": )") + c.json + "}}]");
        int faces = 0;
        const Box3 box = Measure(ObjectOf(L"p"), &faces);
        EXPECT_GT(faces, 1);
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(box.min[k], c.min[k], 0.02);
            EXPECT_NEAR(box.max[k], c.max[k], 0.02);
        }
        EXPECT_NEAR(Volume(ObjectOf(L"p")), c.volume, c.volume * c.tolerance + 1e-4);
    }
}

TEST_F(Objects, StacksGiveAMeshOfTheirOwn) {
    OpenScene(
        R"("modifiers": {"move": {"class": "XForm", "matrix": [[1,0,0],[0,1,0],[0,0,1],[0,0,100]]}},
      "objects": {"box": {"class": "Box", "params": {"height": 10}},
                  "stack": {"base": "box", "modifiers": ["move"]},
                  "own": {"class": "Box", "modifiers": ["move", {"class": "CoronaDisplacementMod", "enabled": false}]}},
      "nodes": [{"name": "bare", "object": "box"}, {"name": "a", "object": "stack"}, {"name": "b", "object": "stack"},
                {"name": "own", "object": "own"},
                {"name": "two", "object": "stack", "modifiers": ["move"]},
                {"name": "off", "object": "box", "modifiers": [{"class": "TurboSmooth", "enabled": false}]},
                {"name": "lamp", "object": {"class": "Omni"}, "modifiers": ["move"]}])");
    const auto height = [](const wchar_t* node) { return Measure(ObjectOf(node)).max.z; };
    EXPECT_NEAR(height(L"bare"), 10, 1e-4);
    EXPECT_NEAR(height(L"a"), 110, 1e-4);
    EXPECT_NEAR(height(L"two"), 210, 1e-4);
    EXPECT_EQ(ObjectOf(L"a")->ClassName(false), L"Mesh");
    EXPECT_EQ(ObjectOf(L"off")->ClassName(false), L"Box");
    EXPECT_EQ(ObjectOf(L"lamp")->ClassName(false), L"Omni");
    EXPECT_EQ(ObjectOf(L"a"), ObjectOf(L"b")); // the stack is on the object
    EXPECT_EQ(ObjectOf(L"a"), ObjectOf(L"a")); // and its result is kept

    Object* top = NodeNamed(L"own")->GetObjectRef();
    ASSERT_EQ(top->SuperClassID(), SClass_ID{GEN_DERIVOB_CLASS_ID});
    auto* derived = dynamic_cast<IDerivedObject*>(top);
    ASSERT_EQ(derived->NumModifiers(), 2);
    EXPECT_EQ(derived->GetModifier(0)->ClassName(false), L"XForm");
    EXPECT_FALSE(derived->GetModifier(1)->IsEnabled());
    EXPECT_EQ(derived->GetModifier(2), nullptr);
    EXPECT_EQ(derived->GetObjRef()->ClassName(false), L"Box");

    // A parameter below changes the result.
    simhost::Entity* box = simhost::EntityOf(simhost::BaseOf(NodeNamed(L"a")->GetObjectRef()));
    box->Set(box->FindParam(L"height"), simhost::Scalar(50.0f));
    EXPECT_NEAR(height(L"a"), 150, 1e-4);
}

TEST_F(Objects, RenderableShapesConvertToTubes) {
    OpenScene(R"("objects": {
       "line": {"class": "Line", "splines": [{"points": [[0,0,0],[0,0,0],[100,0,0],[100,100,0]]}], "params": {"render_renderable": true, "render_thickness": 4, "render_sides": 8}},
       "flat": {"class": "Line", "splines": [{"points": [[0,0,0],[1,0,0]]}]},
       "ring": {"class": "Circle", "params": {"radius": 50, "render_renderable": true, "render_thickness": 2}},
       "wall": {"class": "Rectangle", "params": {"length": 10, "width": 20}, "modifiers": [{"class": "Extrude", "params": {"amount": 5}}]}},
      "nodes": [{"name": "line", "object": "line"}, {"name": "flat", "object": "flat"}, {"name": "ring", "object": "ring"}, {"name": "wall", "object": "wall"}])");
    EXPECT_EQ(ObjectOf(L"line")->SuperClassID(), SClass_ID{SHAPE_CLASS_ID});
    int faces = 0;
    Measure(ObjectOf(L"flat"), &faces);
    EXPECT_EQ(faces, 0);
    const Box3 line = Measure(ObjectOf(L"line"), &faces);
    EXPECT_EQ(faces, 2 * 2 * 8 + 2 * 6); // walls of two pieces, two caps
    EXPECT_NEAR(line.max.z, 2, 1e-3);
    EXPECT_NEAR(line.max.y, 100, 1e-3);
    EXPECT_GT(Volume(ObjectOf(L"line")), 0);
    const Box3 ring = Measure(ObjectOf(L"ring"));
    EXPECT_NEAR(ring.max.x, 51, 0.1);
    EXPECT_NEAR(Volume(ObjectOf(L"ring")), 3.1416 * 2 * 3.1416 * 50, 60);
    EXPECT_EQ(ObjectOf(L"wall")->SuperClassID(), SClass_ID{GEOMOBJECT_CLASS_ID});
    EXPECT_NEAR(Volume(ObjectOf(L"wall")), 1000, 0.1);
}

TEST_F(Objects, CamerasAndTheirLenses) {
    OpenScene(R"("nodes": [
      {"name": "free", "object": {"class": "Free", "camera": {"fov": 1.2, "ortho": true, "target_distance": 77, "manual_clip": true, "near": 2, "far": 99}}},
      {"name": "lens", "object": {"class": "Physical", "params": {"film_width_mm": 36, "focal_length_mm": 18}}}])");
    auto* free = dynamic_cast<GenCamera*>(ObjectOf(L"free"));
    ASSERT_TRUE(free);
    Interval valid = FOREVER;
    CameraState state;
    free->EvalCameraState(0, valid, &state);
    EXPECT_EQ(state.fov, 1.2f);
    EXPECT_TRUE(free->IsOrtho() && state.isOrtho);
    EXPECT_EQ(free->GetTDist(0, valid), 77);
    EXPECT_TRUE(free->GetManualClip());
    EXPECT_EQ(free->GetClipDist(0, CAM_HITHER_CLIP, valid), 2);
    EXPECT_EQ(free->GetClipDist(0, CAM_YON_CLIP, valid), 99);
    auto* lens = dynamic_cast<CameraObject*>(ObjectOf(L"lens"));
    EXPECT_NEAR(lens->GetFOV(0, valid), 3.14159f / 2, 1e-4);
}

TEST_F(Objects, InstancesAreFoundByTheirObject) {
    OpenScene(
        R"("objects": {"o": {"class": "Sphere"}}, "nodes": [{"name": "a", "object": "o"}, {"name": "x", "object": {"class": "Box"}}, {"name": "b", "object": "o"}])");
    const auto nodes = simhost::Scene::Current().NodesOf(NodeNamed(L"b")->GetObjectRef());
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0], NodeNamed(L"a"));
    EXPECT_EQ(nodes[1], NodeNamed(L"b"));
}

TEST_F(Objects, ANewMeshIsItsMakersUntilANodeHoldsIt) {
    OpenScene(R"("nodes": [{"name": "box", "object": {"class": "Box"}}])");
    TriObject* const unused = CreateNewTriObject();
    ASSERT_TRUE(unused);
    EXPECT_EQ(simhost::SceneMesh::LiveLoose(), 1);
    const AnimHandle handle = Animatable::GetHandleByAnim(unused);
    unused->MaybeAutoDelete();
    EXPECT_EQ(Animatable::GetAnimByHandle(handle), nullptr);

    TriObject* const held = CreateNewTriObject();
    NodeNamed(L"box")->SetObjectRef(held);
    EXPECT_EQ(simhost::SceneMesh::LiveLoose(), 0);
    held->MaybeAutoDelete(); // a node holds it
    EXPECT_EQ(ObjectOf(L"box"), held);
    EXPECT_EQ(std::wstring_view(held->ClassName().data()), L"Editable Mesh");
}

} // namespace

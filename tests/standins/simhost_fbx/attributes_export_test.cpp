#include "tests/standins/simhost_fbx/round_trip.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace fbxtest;

aiMatrix4x4 World(const aiNode* node) {
    return node->mParent ? World(node->mParent) * node->mTransformation : node->mTransformation;
}

/// A direction of a light's or camera's own space in the world.
Point3 Direction(const aiScene& scene, const aiString& node, const aiVector3D& own) {
    const aiNode* found = scene.mRootNode->FindNode(node);
    if (!found)
        return {};
    const aiVector3D d = (aiMatrix3x3(World(found)) * own).NormalizeSafe();
    return {d.x, d.y, d.z};
}

void ExpectNear(const Point3& a, const Point3& b, const char* what) {
    EXPECT_LT(Length(a - b), 1e-4) << what << ": " << a.x << ' ' << a.y << ' ' << a.z;
}

constexpr const char* placed = R"("transform": {"position": [1,2,3], "rotation": [30,40,50]})";

TEST(FbxCameras, SeeTheSame) {
    RoundTrip trip(R"("render": {"width": 800, "height": 400},
        "nodes": [
          {"name": "free", )" +
                   std::string(placed) + R"(,
           "object": {"class": "Free", "camera": {"fov": 1.2, "manual_clip": true, "near": 3,
                                                  "far": 500}}},
          {"name": "flat", "object": {"class": "Free", "camera": {"fov": 1, "ortho": true,
                                                                 "target_distance": 200}}},
          {"name": "stretched", "transform": {"scale": [3,1,1]}, "children": [
            {"name": "within", "object": {"class": "Physical", "camera": {"fov": 0.5}},
             "transform": {"rotation": [70,0,20]}}]}])");
    const aiScene& scene = trip.Read();
    ASSERT_EQ(scene.mNumCameras, 3u);
    const aiCamera& free = *scene.mCameras[0];
    EXPECT_NEAR(free.mHorizontalFOV, 1.2f, 1e-5f);
    EXPECT_FLOAT_EQ(free.mClipPlaneNear, 3);
    EXPECT_FLOAT_EQ(free.mClipPlaneFar, 500);
    EXPECT_NEAR(free.mAspect, 2.0f, 1e-6f);
    for (unsigned i = 0; i < scene.mNumCameras; ++i) {
        const aiCamera& camera = *scene.mCameras[i];
        INode* node = GetCOREInterface()->GetINodeByName(Wide(camera.mName.C_Str()).c_str());
        ASSERT_TRUE(node) << camera.mName.C_Str();
        const Matrix3 tm = node->GetNodeTM(0);
        ExpectNear(Direction(scene, camera.mName, camera.mLookAt - camera.mPosition),
                   Normalize(-tm.GetRow(2)), "view");
        if (camera.mName != aiString("within")) // its parent skews its sides
            ExpectNear(Direction(scene, camera.mName, camera.mUp), Normalize(tm.GetRow(1)), "up");
    }
    for (const Record* attribute : trip.File()["Objects"].All("NodeAttribute")) {
        const Record* zoom = attribute->Property("OrthoZoom");
        if (zoom) {
            EXPECT_NEAR(std::get<double>(zoom->values[4]), 400 * std::tan(0.5), 1e-3);
        }
    }
}

TEST(FbxLights, ShineTheSame) {
    RoundTrip trip(R"("nodes": [
          {"name": "spot", )" +
                   std::string(placed) + R"(,
           "object": {"class": "Free Spot", "params": {"multiplier": 0.5, "rgb": [1,0.5,0.25],
                                                       "hotspot": 20, "falloff": 40}}},
          {"name": "sun", )" +
                   std::string(placed) + R"(, "object": {"class": "Free Direct"}},
          {"name": "bulb", "object": {"class": "Omni", "use_light": false}},
          {"name": "panel", "object": {"class": "CoronaLight", "params": {"intensity": 8}}},
          {"name": "photometric", "object": {"class": "Free Light", "params": {
           "Distribution": 1, "hotspot": 0.5, "falloff": 0.75}}}])");
    const aiScene& scene = trip.Read();
    const struct {
        const char* name;
        aiLightSourceType type;
    } rows[] = {{"spot", aiLightSource_SPOT},
                {"sun", aiLightSource_DIRECTIONAL},
                {"bulb", aiLightSource_POINT},
                {"panel", aiLightSource_UNDEFINED}, // the importer has no areas here
                {"photometric", aiLightSource_SPOT}};
    ASSERT_EQ(scene.mNumLights, std::size(rows));
    for (unsigned i = 0; i < scene.mNumLights; ++i) {
        EXPECT_STREQ(scene.mLights[i]->mName.C_Str(), rows[i].name);
        EXPECT_EQ(scene.mLights[i]->mType, rows[i].type) << rows[i].name;
    }
    const aiLight& spot = *scene.mLights[0];
    EXPECT_NEAR(spot.mColorDiffuse.r, 0.5f, 1e-6f);
    EXPECT_NEAR(spot.mColorDiffuse.b, 0.125f, 1e-6f);
    constexpr float radians = 0.01745329252f;
    EXPECT_NEAR(spot.mAngleInnerCone, 20 * radians, 1e-5f);
    EXPECT_NEAR(spot.mAngleOuterCone, 40 * radians, 1e-5f);
    EXPECT_NEAR(scene.mLights[4]->mAngleInnerCone, 0.5f, 1e-5f);
    EXPECT_NEAR(scene.mLights[4]->mAngleOuterCone, 0.75f, 1e-5f);
    const Record& objects = trip.File()["Objects"];
    EXPECT_EQ(objects.All("NodeAttribute").at(3)->Property("LightType")->Int(4), 3);
    EXPECT_EQ(objects.All("NodeAttribute").at(2)->Property("CastLightOnObject")->Int(4), 0);
    for (const unsigned i : {0u, 1u}) {
        INode* node = GetCOREInterface()->GetINodeByName(Wide(rows[i].name).c_str());
        ExpectNear(Direction(scene, scene.mLights[i]->mName, scene.mLights[i]->mDirection),
                   Normalize(-node->GetNodeTM(0).GetRow(2)), rows[i].name);
    }
}

} // namespace

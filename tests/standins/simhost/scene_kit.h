#pragma once
#include "simhost/files/scene_file.h"
#include "simhost/scene/objects.h"
#include "simhost/scene/scene.h"

#include <gtest/gtest.h>

/// Opens a scene with these members after the header; the test fails when it does not load.
inline void OpenScene(const std::string& members) {
    const auto result = simhost::LoadSceneText(R"({"format": "simhost-scene", "version": 1)" +
                                               (members.empty() ? "" : ", " + members) + "}");
    ASSERT_TRUE(result.ok) << result.error;
}

inline simhost::SceneNode* NodeNamed(std::wstring_view name) {
    return simhost::Scene::Current().FindByName(name);
}

/// The material of the node of that name.
inline Mtl* MaterialOf(std::wstring_view node) {
    return NodeNamed(node)->GetMtl();
}

/// Starts every test with an empty scene.
class SceneTest : public testing::Test {
  protected:
    void SetUp() override { simhost::Scene::Reset(); }
    void TearDown() override {
        simhost::Scene::Reset();
        EXPECT_EQ(simhost::ResultMesh::LiveTemporaries(), 0) << "a converted object was not freed";
    }
};

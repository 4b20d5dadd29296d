// The package of the sample scene that comes with the project.
#include "simhost/files/scene_file.h"
#include "tests/package/package_kit.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace brimwave::testing {
namespace {

using ::testing::UnorderedElementsAre;

TEST(SampleScene, HasEveryKindOfLightAndCamera) {
    const auto loaded = simhost::LoadSceneFile(Wide(SourcePath("samples/room/room.json")));
    ASSERT_TRUE(loaded) << loaded.error;
    const Written written = WriteOpenScene();
    for (const json& object : written.document.at("objects"))
        EXPECT_EQ(object.at("errors"), json::array()) << object.at("object_name");
    std::set<std::string> lights, cameras;
    bool embedsProfile = false;
    for (const json& light : written.document.at("lights")) {
        lights.insert(light.at("light_type").get<std::string>());
        embedsProfile = embedsProfile || light.contains("ies_data");
    }
    for (const json& camera : written.document.at("cameras"))
        cameras.insert(camera.at("camera_class").get<std::string>());
    EXPECT_THAT(lights, UnorderedElementsAre("CoronaLight", "CoronaSun", "VRayLight", "VRaySun",
                                             "VRayIES", "PhotometricLight"));
    EXPECT_THAT(cameras, UnorderedElementsAre("Physical", "Target", "Free", "CoronaCam",
                                              "VRayPhysicalCamera"));
    EXPECT_TRUE(embedsProfile);
    const json& environment = written.document.at("environment");
    EXPECT_TRUE(environment.at("map").is_object());
    EXPECT_TRUE(environment.contains("corona_bg_source"));
}

} // namespace
} // namespace brimwave::testing

// A scene with a thing of each kind, of which each call throws in turn: the document stays valid,
// what is not concerned stays as it was, and whatever is missing is told.
#include "simhost/scene/faults.h"
#include "tests/package/package_kit.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace brimwave::testing {
namespace {

json Slots(const std::vector<std::string>& maps) {
    json list = json::array();
    for (const std::string& map : maps)
        list.push_back({{"name", "slot of " + map}, {"map", map}});
    return list;
}

json OwnClass(const std::string& className, const std::vector<json>& params) {
    json entry = ClassWith(className, params);
    entry.erase("name");
    return entry;
}

json Maps() {
    json composite = OwnClass("Composite", {Param("blendMode", "int_tab", {0, 5}),
                                            Param("opacity", "float_tab", {100, 50}),
                                            Param("mapEnabled", "bool_tab", {true, false})});
    composite["slot_list"] = Slots({"leaf"});
    json list = OwnClass("MultiTexture", {Param("submap_on", "bool_tab", {true})});
    list["slot_list"] = Slots({"leaf"});
    return {{"leaf", {{"class", "CoronaColor"}}},
            {"other", {{"class", "CoronaColor"}, {"name", "other map"}}},
            {"file",
             {{"class", "Bitmap"},
              {"file", "wood.png"},
              {"sub_objects", {{"uvgen", json::object()}, {"output", json::object()}}}}},
            {"picture", {{"class", "CoronaBitmap"}, {"params", {{"filename", "sky.hdr"}}}}},
            {"composite", composite},
            {"list", list},
            {"ramp", {{"class", "Gradient Ramp"}}},
            {"falloff", {{"class", "Falloff"}}},
            {"sky", {{"class", "CoronaBitmap"}, {"name", "sky"}}}};
}

json Materials() {
    json own = OwnClass("My Material", {Param("blendAmounts", "float_tab", {0.5})});
    own["slot_list"] = Slots({"picture", "composite", "list", "ramp", "falloff"});
    json other = OwnClass("Other Material", {Param("amount", "float", 1)});
    other["slot_list"] = Slots({"other"});
    return {{"standard",
             {{"class", "Standard (Legacy)"},
              {"slots", {{"Diffuse Color", "file"}}},
              {"sub_objects", {{"shader", json::object()}}}}},
            {"corona", {{"class", "\rCoronaPhysicalMtl"}, {"params", {{"baseTexmap", "picture"}}}}},
            {"layered",
             {{"class", "CoronaLayeredMtl"},
              {"params", {{"baseMtl", "corona"}, {"layers", {"own"}}, {"amounts", {0.5}}}}}},
            {"own", own},
            {"multi",
             {{"class", "Multi/Sub-Object"}, {"sub_materials", {"standard", "layered", "own"}}}},
            {"other", other}};
}

json Objects() {
    json web = OwnClass("Some Light", {Param("webfile", "filename", "lamp.ies")});
    web["super_class"] = "light";
    return {
        {"pot", {{"class", "Teapot"}}},
        {"stack", {{"base", "pot"}, {"modifiers", {"displacement"}}}},
        {"lamp",
         {{"class", "CoronaLight"}, {"params", {{"targeted", true}, {"iesFile", "a.ies"}}}}},
        {"web", web},
        {"view", {{"class", "Physical"}, {"camera", {{"manual_clip", true}, {"ortho", true}}}}}};
}

json Scene() {
    json scene = EmptyScene();
    scene["maps"] = Maps();
    scene["materials"] = Materials();
    scene["objects"] = Objects();
    scene["modifiers"] = {
        {"displacement", {{"class", "VRayDisplacementMod"}, {"params", {{"texmap", "leaf"}}}}}};
    const auto node = [](const char* name, const char* object, const json& material) {
        return json{{"name", name}, {"object", object}, {"material", material}};
    };
    scene["nodes"] = {Box("other", "other"),
                      node("subject", "stack", "multi"),
                      node("plain", "pot", "standard"),
                      Box("last", "other"),
                      node("lamp", "lamp", nullptr),
                      {{"name", "aim"}},
                      node("web", "web", nullptr),
                      node("view", "view", nullptr)};
    scene["nodes"][4]["target"] = "aim";
    scene["nodes"][7]["target"] = "aim";
    scene["environment"] = {{"map", "sky"}, {"use_map", true}};
    scene["renderer"] = {{"class", "Corona"}, {"params", {{"bg_source", 1}, {"bg_texmap", "sky"}}}};
    scene["faults"] = json::object();
    return scene;
}

using simhost::Call;

// Calls that each sort of thing has.
const std::vector<Call> classCalls = {Call::GetClassName,   Call::ClassID,       Call::SuperClassID,
                                      Call::NumParamBlocks, Call::GetParamBlock, Call::NumRefs,
                                      Call::GetReference};
const std::vector<Call> mtlCalls = {
    Call::GetName,     Call::NumSubTexmaps,        Call::GetSubTexmap,
    Call::SubTexmapOn, Call::GetSubTexmapSlotName, Call::NumSubMtls,
    Call::GetSubMtl,   Call::GetMapName,           Call::GetUVGen};
const std::vector<Call> blockCalls = {Call::GetDesc, Call::GetValue, Call::Count};
const std::vector<Call> objectCalls = {
    Call::CanConvertToType, Call::ConvertToType, Call::IsOrtho, Call::GetFOV,
    Call::GetManualClip,    Call::GetClipDist,   Call::GetTDist};
const std::vector<Call> nodeCalls = {Call::EvalWorldState, Call::GetMtl,    Call::GetNodeTM,
                                     Call::GetObjectRef,   Call::GetTarget, Call::GetName};
const std::vector<Call> hostCalls = {Call::GetEnvironmentMap, Call::GetBackGround,
                                     Call::GetFullFilePath};

std::vector<Call> CallsAt(std::string_view place) {
    const auto isAmong = [&](std::string_view list) { return place.rfind(list, 0) == 0; };
    if (place.find("/blocks/") != std::string_view::npos)
        return blockCalls;
    if (isAmong("/nodes/"))
        return nodeCalls;
    if (isAmong("/faults"))
        return hostCalls;
    std::vector<Call> calls = classCalls;
    if (isAmong("/maps/") || isAmong("/materials/"))
        calls.insert(calls.end(), mtlCalls.begin(), mtlCalls.end());
    if (isAmong("/objects/"))
        calls.insert(calls.end(), objectCalls.begin(), objectCalls.end());
    return calls;
}

// Everything in the scene that can throw. What only scripts read (a renderer's settings) is left
// out: a script that fails gives no value, without a word.
constexpr const char* places[] = {"/maps/file",
                                  "/maps/file/sub_objects/uvgen",
                                  "/maps/file/sub_objects/output",
                                  "/maps/picture",
                                  "/maps/composite",
                                  "/maps/composite/blocks/0",
                                  "/maps/list",
                                  "/maps/ramp",
                                  "/maps/falloff",
                                  "/maps/sky",
                                  "/materials/standard",
                                  "/materials/standard/sub_objects/shader",
                                  "/materials/corona",
                                  "/materials/layered",
                                  "/materials/own",
                                  "/materials/own/blocks/0",
                                  "/materials/multi",
                                  "/modifiers/displacement",
                                  "/objects/pot",
                                  "/objects/lamp",
                                  "/objects/web",
                                  "/objects/web/blocks/0",
                                  "/objects/view",
                                  "/nodes/1",
                                  "/nodes/4",
                                  "/nodes/5",
                                  "/nodes/7",
                                  "/faults"};

/// The document without the numbers of its nodes: they shift when a material fails.
json WithoutIds(json value) {
    if (value.is_object())
        for (const char* const id : {"node_id", "ref"})
            if (value.contains(id))
                value[id] = 0;
    if (value.is_structured())
        for (json& part : value)
            part = WithoutIds(std::move(part));
    return value;
}

class EveryCall : public ::testing::Test {
  protected:
    void Expect(const json& scene) {
        const Written written = WritePackage(scene);
        for (const char* const name : {"other", "last"}) {
            EXPECT_EQ(WithoutIds(written.Object(name)), WithoutIds(healthy_.Object(name)));
            EXPECT_EQ(written.Object(name).at("errors"), json::array());
        }
        if (WithoutIds(written.document) == WithoutIds(healthy_.document))
            return;
        const bool told = std::any_of(written.log.begin(), written.log.end(), [&](auto& line) {
            const bool warns = line.rfind("WARNING: ", 0) == 0 || line.rfind("[", 0) == 0;
            return warns && !healthy_.Logged(line);
        });
        EXPECT_TRUE(told) << written.text;
    }

    Written healthy_ = WritePackage(Scene());
};

TEST_F(EveryCall, OfEveryThing) {
    for (const json& object : healthy_.document.at("objects"))
        ASSERT_EQ(object.at("errors"), json::array());
    for (const char* const place : places)
        for (const Call call : CallsAt(place)) {
            const std::string name(simhost::NameOfCall(call));
            SCOPED_TRACE(std::string(place) + " " + name);
            json scene = Scene();
            scene.at(json::json_pointer(place))["throws"] = {name};
            Expect(scene);
        }
}

TEST_F(EveryCall, AllCallsAtOnceAndNoException) {
    for (const std::string place : places) {
        if (place == "/faults")
            continue;
        SCOPED_TRACE(place);
        json scene = Scene();
        json& thing = scene.at(json::json_pointer(place));
        thing["throws"] = true;
        if (place.find("/blocks/") == std::string::npos)
            thing["throw_kind"] = "other";
        Expect(scene);
    }
}

} // namespace
} // namespace brimwave::testing

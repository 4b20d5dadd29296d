// Any bytes as a script that runs over a small scene, without files and within small limits.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "simhost/bindings/bindings.h"
#include "simhost/files/scene_file.h"
#include "simhost/script/heap.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/source.h"

namespace {

constexpr std::string_view scene = R"({"format": "simhost-scene", "version": 1,
    "materials": {"m": {"class": "Multi/Sub-Object", "sub_materials": ["m"]}},
    "objects": {"cube": {"class": "Box"},
                "wire": {"class": "Line", "splines": [{"points": [[0,0,0],[9,0,0]]}],
                         "params": {"render_renderable": true}}},
    "nodes": [{"name": "a", "object": "cube", "material": "m"},
              {"name": "g", "group_head": true,
               "children": [{"name": "b", "object": "wire", "group_member": true}]}]})";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace simhost::script;
    if (!simhost::LoadSceneText(scene))
        __builtin_trap();
    const size_t before = MemoryMeter::Live();
    {
        InterpreterOptions options;
        options.limits.steps = 50'000;
        options.limits.liveBytes = size_t{32} << 20;
        options.usesFiles = false;
        Interpreter interpreter(options);
        RegisterHost(interpreter);
        try {
            interpreter.Run(
                DecodeSource(std::string_view(reinterpret_cast<const char*>(data), size)));
        } catch (const ScriptError&) { // the script's own fault
        }
    }
    // Whatever the script built, nothing of it outlives its engine.
    if (MemoryMeter::Live() != before)
        __builtin_trap();
    return 0;
}

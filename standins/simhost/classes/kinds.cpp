#include "simhost/classes/kinds.h"

namespace simhost {

namespace {

struct KindRow {
    std::string_view name;
    SClass_ID kind;
};

constexpr KindRow kinds[] = {{"material", MATERIAL_CLASS_ID},
                             {"texmap", TEXMAP_CLASS_ID},
                             {"geometry", GEOMOBJECT_CLASS_ID},
                             {"light", LIGHT_CLASS_ID},
                             {"camera", CAMERA_CLASS_ID},
                             {"shape", SHAPE_CLASS_ID},
                             {"helper", HELPER_CLASS_ID},
                             {"modifier", OSM_CLASS_ID},
                             {"wsm", WSM_CLASS_ID},
                             {"renderer", RENDERER_CLASS_ID},
                             {"uvgen", UVGEN_CLASS_ID},
                             {"output", TEXOUTPUT_CLASS_ID},
                             {"shader", SHADER_KIND},
                             {"reference", REF_TARGET_CLASS_ID}};

} // namespace

SClass_ID KindOfName(std::string_view name) {
    for (const KindRow& row : kinds)
        if (row.name == name)
            return row.kind;
    return 0;
}

bool IsObjectKind(SClass_ID kind) {
    return kind == GEOMOBJECT_CLASS_ID || kind == LIGHT_CLASS_ID || kind == CAMERA_CLASS_ID ||
           kind == SHAPE_CLASS_ID || kind == HELPER_CLASS_ID;
}

} // namespace simhost

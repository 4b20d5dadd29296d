#include "tests/standins/sceneconv/fbx_text.h"

namespace sceneconv::testing {

std::string P(const std::string& name, const std::string& type, const std::string& values,
              const std::string& label) {
    return "P: \"" + name + "\", \"" + type + "\", \"" + label + "\", \"A\"" +
           (values.empty() ? "" : "," + values) + "\n";
}

std::string Object(const std::string& kind, int id, const std::string& name,
                   const std::string& subclass, const std::string& properties,
                   const std::string& rest) {
    return kind + ": " + std::to_string(id) + ", \"" + kind + "::" + name + "\", \"" + subclass +
           "\" {\nVersion: 102\nProperties70:  {\n" + properties + "}\n" + rest + "}\n";
}

std::string Model(int id, const std::string& name, const std::string& subclass,
                  const std::string& properties) {
    return Object("Model", id, name, subclass, properties, "Shading: T\nCulling: \"CullingOff\"\n");
}

std::string Mesh(int id, int quadMaterial, int triangleMaterial) {
    return "Geometry: " + std::to_string(id) +
           ", \"Geometry::\", \"Mesh\" {\n"
           "Vertices: *15 {\na: 0,0,0,1,0,0,1,1,0,0,1,0,2,0,0\n}\n"
           "PolygonVertexIndex: *7 {\na: 0,1,2,-4,1,4,-3\n}\nGeometryVersion: 124\n"
           "LayerElementUV: 0 {\nVersion: 101\nName: \"UVChannel_3\"\n"
           "MappingInformationType: \"ByPolygonVertex\"\n"
           "ReferenceInformationType: \"Direct\"\n"
           "UV: *14 {\na: 0,0,1,0,1,1,0,1,1,0,2,0,1,1\n}\n}\n"
           "LayerElementMaterial: 0 {\nVersion: 101\nName: \"\"\n"
           "MappingInformationType: \"ByPolygon\"\n"
           "ReferenceInformationType: \"IndexToDirect\"\nMaterials: *2 {\na: " +
           std::to_string(quadMaterial) + "," + std::to_string(triangleMaterial) +
           "\n}\n}\nLayer: 0 {\nVersion: 100\n"
           "LayerElement:  {\nType: \"LayerElementMaterial\"\nTypedIndex: 0\n}\n"
           "LayerElement:  {\nType: \"LayerElementUV\"\nTypedIndex: 0\n}\n}\n}\n";
}

std::string Fbx(const std::string& objects, const std::vector<Link>& links,
                const std::string& settings) {
    std::string text = "; FBX 7.4.0 project file\nFBXHeaderExtension:  {\n"
                       "FBXHeaderVersion: 1003\nFBXVersion: 7400\nCreator: \"test\"\n}\n"
                       "GlobalSettings:  {\nVersion: 1000\nProperties70:  {\n" +
                       settings +
                       "}\n}\nDefinitions:  {\nVersion: 100\nCount: 1\n}\nObjects:  {\n" + objects +
                       "}\nConnections:  {\n";
    for (const Link& link : links) {
        text += "C: \"" + std::string(link.property.empty() ? "OO" : "OP") + "\"," +
                std::to_string(link.from) + "," + std::to_string(link.to) +
                (link.property.empty() ? "" : ",\"" + link.property + "\"") + "\n";
    }
    return text + "}\n";
}

std::string ClassOf(std::uint32_t a, std::uint32_t b, int super) {
    return P("3dsMax|ClassIDa", "int", std::to_string(static_cast<std::int32_t>(a))) +
           P("3dsMax|ClassIDb", "int", std::to_string(static_cast<std::int32_t>(b))) +
           P("3dsMax|SuperClassID", "int", std::to_string(super));
}

std::string HostMaterial(int id, const std::string& name, const std::string& properties) {
    return Object("Material", id, name, "", properties, "ShadingModel: \"unknown\"\n");
}

} // namespace sceneconv::testing

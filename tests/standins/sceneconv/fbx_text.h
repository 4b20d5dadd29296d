// FBX files as text, made of few words.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sceneconv::testing {

/// One "P" record.
[[nodiscard]] std::string P(const std::string& name, const std::string& type,
                            const std::string& values, const std::string& label = "");
/// An object with properties and further records.
[[nodiscard]] std::string Object(const std::string& kind, int id, const std::string& name,
                                 const std::string& subclass, const std::string& properties,
                                 const std::string& rest = "");
[[nodiscard]] std::string Model(int id, const std::string& name, const std::string& subclass,
                                const std::string& properties = "");
/// A quad and a triangle over five vertices, with the material index of each.
[[nodiscard]] std::string Mesh(int id, int quadMaterial, int triangleMaterial);
/// The host's class ids as properties.
[[nodiscard]] std::string ClassOf(std::uint32_t a, std::uint32_t b, int super);
[[nodiscard]] std::string HostMaterial(int id, const std::string& name,
                                       const std::string& properties);

/// A connection; of a property when one is named.
struct Link {
    int from;
    int to;
    std::string property;
};

/// A whole file. The settings given by default are y up and centimetres.
[[nodiscard]] std::string Fbx(const std::string& objects, const std::vector<Link>& links,
                              const std::string& settings = P("UpAxis", "int", "1") +
                                                            P("UnitScaleFactor", "double", "1"));

} // namespace sceneconv::testing

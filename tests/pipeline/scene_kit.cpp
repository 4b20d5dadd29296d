#include "tests/pipeline/scene_kit.h"

#include "host/attempt.h"
#include "simhost/files/scene_file.h"

#include <cstdlib>
#include <stdexcept>

namespace brimwave {

using nlohmann::json;

json EmptyScene() {
    return {{"format", "simhost-scene"}, {"version", 1}, {"nodes", json::array()}};
}

json BoxNode(const std::string& name, const json& material) {
    return {{"name", name}, {"object", {{"class", "Box"}}}, {"material", material}};
}

json SplineNode(const std::string& name) {
    const json line = {{"class", "Line"},
                       {"params", {{"render_renderable", true}}},
                       {"splines", {{{"points", {{0, 0, 0}, {10, 0, 0}}}}}}};
    return {{"name", name}, {"object", line}};
}

void OpenScene(const json& scene) {
    if (const simhost::LoadResult loaded = simhost::LoadSceneText(scene.dump()); !loaded)
        throw std::runtime_error(loaded.error);
}

std::vector<INode*> AllNodes() {
    std::vector<INode*> nodes;
    const auto add = [&](const auto& self, INode* parent) -> void {
        for (int i = 0; i < parent->NumberOfChildren(); ++i) {
            nodes.push_back(parent->GetChildNode(i));
            self(self, nodes.back());
        }
    };
    add(add, GetCOREInterface()->GetRootNode());
    return nodes;
}

INode* NodeNamed(std::wstring_view name) {
    INode* found = nullptr;
    int count = 0;
    for (INode* node : AllNodes())
        Attempt([&] {
            if (node->GetName() == name) {
                found = node;
                ++count;
            }
        });
    return count == 1 ? found : nullptr;
}

std::vector<std::wstring> NodeMaterialNames() {
    std::vector<std::wstring> names;
    for (INode* node : AllNodes())
        if (Mtl* material = node->GetMtl())
            names.emplace_back(material->GetName().data());
    return names;
}

ScopedVariable::ScopedVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* set = std::getenv(name))
        before_ = set;
    Set(name, value);
}

ScopedVariable::~ScopedVariable() {
    Set(name_, before_);
}

void ScopedVariable::Set(const char* name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name, value.c_str()); // an empty value removes it
#else
    if (value.empty())
        unsetenv(name);
    else
        setenv(name, value.c_str(), 1);
#endif
}

} // namespace brimwave

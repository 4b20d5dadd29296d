#pragma once
#include "host/text.h"

#include <max.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace brimwave {

/// A scene file without anything in it.
[[nodiscard]] nlohmann::json EmptyScene();
/// A node with a box of its own; `material` is an id or null.
[[nodiscard]] nlohmann::json BoxNode(const std::string& name, const nlohmann::json& material);
/// A node with a spline of one segment that renders, without a material.
[[nodiscard]] nlohmann::json SplineNode(const std::string& name);

/// Opens the scene in the stand-in host; throws when it is refused.
void OpenScene(const nlohmann::json& scene);

/// Every node but the root, parents first, children in order.
[[nodiscard]] std::vector<INode*> AllNodes();
/// The one node of that name; null when there is none, or more than one.
[[nodiscard]] INode* NodeNamed(std::wstring_view name);
/// The names of the materials of all nodes, in AllNodes' order; nodes without one are left out.
[[nodiscard]] std::vector<std::wstring> NodeMaterialNames();

/// Sets an environment variable while it lives; empty removes it.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const std::string& value);
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable();

  private:
    static void Set(const char* name, const std::string& value);
    const char* name_;
    std::string before_;
};

} // namespace brimwave

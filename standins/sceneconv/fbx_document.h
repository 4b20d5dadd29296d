// The objects of an FBX file with their properties and connections.
#pragma once

#include "sceneconv/fbx_records.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sceneconv {

/// One "P" record: name, type, a second type or label, and the values behind them.
struct FbxProperty : FbxValues {
    std::string name;
    std::string type;
    std::string label;
};

using FbxProperties = std::vector<FbxProperty>;

class FbxObject;

struct FbxConnection {
    const FbxObject* object = nullptr;
    std::string property; ///< empty for an object to object connection
};

class FbxObject {
  public:
    std::int64_t id = 0;
    std::string kind;     ///< "Model", "Material", "Texture", "NodeAttribute", ..
    std::string name;     ///< as the writing program had it, in UTF-8
    std::string subclass; ///< "Mesh", "Light", "Camera", "Null", ..
    FbxProperties properties;
    FbxRecord record; ///< the other records of the object, without its properties

    /// The object's own property, else its kind's template, else null.
    [[nodiscard]] const FbxProperty* Find(std::string_view propertyName) const;
    /// The object's own property only.
    [[nodiscard]] const FbxProperty* FindOwn(std::string_view propertyName) const;
    [[nodiscard]] double Number(std::string_view propertyName, double fallback) const;
    [[nodiscard]] std::int64_t Integer(std::string_view propertyName, std::int64_t fallback) const;

    /// What is connected to this object, in the order of the file.
    [[nodiscard]] const std::vector<FbxConnection>& Sources() const { return sources_; }
    /// The sources of that kind by a plain connection; the first of them, or null.
    [[nodiscard]] std::vector<const FbxObject*> Sources(std::string_view sourceKind) const;
    [[nodiscard]] const FbxObject* Source(std::string_view sourceKind) const;

  private:
    friend class FbxDocument;
    const FbxProperties* defaults_ = nullptr;
    std::vector<FbxConnection> sources_;
};

/// The channel in a set's name as the host writes it ("UVChannel_3"): 1..99, or 0.
[[nodiscard]] int HostUvChannel(const std::string& setName);

class FbxDocument {
  public:
    /// Throws std::runtime_error when the records are damaged.
    explicit FbxDocument(std::string_view bytes);
    FbxDocument(const FbxDocument&) = delete;
    FbxDocument& operator=(const FbxDocument&) = delete;

    /// The root of the node tree: its sources are the top models.
    [[nodiscard]] const FbxObject& Root() const { return objects_.at(0); }
    [[nodiscard]] const FbxObject& Settings() const { return settings_; }
    [[nodiscard]] const FbxObject* Find(std::int64_t id) const;

  private:
    void ReadTemplates(const FbxRecord& definitions);
    void ReadObjects(FbxRecord& objects);
    void ReadConnections(const FbxRecord& connections);

    std::map<std::string, FbxProperties, std::less<>> templates_;
    std::map<std::int64_t, FbxObject> objects_;
    FbxObject settings_;
};

} // namespace sceneconv

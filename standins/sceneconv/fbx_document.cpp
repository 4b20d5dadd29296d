#include "sceneconv/fbx_document.h"

#include <algorithm>
#include <cstdlib>

namespace sceneconv {

namespace {

FbxProperties ReadProperties(const FbxRecord& owner) {
    FbxProperties properties;
    const FbxRecord* list = owner.Child("Properties70");
    if (!list)
        return properties;
    for (const FbxRecord& record : list->children) {
        if (record.values.size() >= 4) {
            properties.push_back({{{record.values.begin() + 4, record.values.end()}},
                                  record.Text(0),
                                  record.Text(1),
                                  record.Text(2)});
        }
    }
    return properties;
}

/// Binary files write "name\0\1Class", text files "Class::name".
std::string PlainName(const std::string& text) {
    using namespace std::string_literals;
    if (const std::size_t cut = text.find("\0\1"s); cut != std::string::npos)
        return text.substr(0, cut);
    const std::size_t cut = text.find("::");
    return cut == std::string::npos ? text : text.substr(cut + 2);
}

/// Kinds have one template each, but for attributes: those of lights, cameras, .. differ.
std::string TemplateKey(const std::string& kind, const std::string& templateName) {
    return kind == "NodeAttribute" ? kind + templateName : kind;
}

const FbxProperty* FindIn(const FbxProperties& properties, std::string_view name) {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const FbxProperty& p) { return p.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

} // namespace

const FbxProperty* FbxObject::FindOwn(std::string_view propertyName) const {
    return FindIn(properties, propertyName);
}

const FbxProperty* FbxObject::Find(std::string_view propertyName) const {
    const FbxProperty* own = FindOwn(propertyName);
    return own || !defaults_ ? own : FindIn(*defaults_, propertyName);
}

double FbxObject::Number(std::string_view propertyName, double fallback) const {
    const FbxProperty* property = Find(propertyName);
    return property ? property->Number() : fallback;
}

std::int64_t FbxObject::Integer(std::string_view propertyName, std::int64_t fallback) const {
    const FbxProperty* property = Find(propertyName);
    return property ? property->Integer() : fallback;
}

std::vector<const FbxObject*> FbxObject::Sources(std::string_view sourceKind) const {
    std::vector<const FbxObject*> found;
    for (const FbxConnection& source : sources_) {
        if (source.property.empty() && source.object->kind == sourceKind)
            found.push_back(source.object);
    }
    return found;
}

const FbxObject* FbxObject::Source(std::string_view sourceKind) const {
    const std::vector<const FbxObject*> all = Sources(sourceKind);
    return all.empty() ? nullptr : all.front();
}

int HostUvChannel(const std::string& setName) {
    constexpr std::string_view prefix = "UVChannel_";
    const int number = setName.starts_with(prefix) ? std::atoi(setName.c_str() + prefix.size()) : 0;
    return number >= 1 && number <= 99 ? number : 0;
}

FbxDocument::FbxDocument(std::string_view bytes) {
    std::vector<FbxRecord> records = ReadFbxRecords(bytes);
    objects_[0].kind = "Root";
    // Objects look up their templates, connections their objects.
    const auto forAll = [&](std::string_view name, auto read) {
        for (FbxRecord& record : records) {
            if (record.name == name)
                read(record);
        }
    };
    forAll("GlobalSettings",
           [this](const FbxRecord& r) { settings_.properties = ReadProperties(r); });
    forAll("Definitions", [this](const FbxRecord& r) { ReadTemplates(r); });
    forAll("Objects", [this](FbxRecord& r) { ReadObjects(r); });
    forAll("Connections", [this](const FbxRecord& r) { ReadConnections(r); });
}

const FbxObject* FbxDocument::Find(std::int64_t id) const {
    const auto found = objects_.find(id);
    return found == objects_.end() ? nullptr : &found->second;
}

void FbxDocument::ReadTemplates(const FbxRecord& definitions) {
    for (const FbxRecord& type : definitions.children) {
        for (const FbxRecord& defaults : type.children) {
            if (type.name == "ObjectType" && defaults.name == "PropertyTemplate")
                templates_[TemplateKey(type.Text(0), defaults.Text(0))] = ReadProperties(defaults);
        }
    }
}

void FbxDocument::ReadObjects(FbxRecord& objects) {
    for (FbxRecord& record : objects.children) {
        const std::int64_t id = record.Integer(0);
        if (id == 0 || record.values.size() < 3)
            continue;
        FbxObject& object = objects_[id];
        object.id = id;
        object.kind = record.name;
        object.name = PlainName(record.Text(1));
        object.subclass = record.Text(2);
        object.properties = ReadProperties(record);
        const auto defaults = templates_.find(TemplateKey(record.name, "Fbx" + object.subclass));
        object.defaults_ = defaults == templates_.end() ? nullptr : &defaults->second;
        std::erase_if(record.children,
                      [](const FbxRecord& child) { return child.name == "Properties70"; });
        object.record = std::move(record);
    }
}

void FbxDocument::ReadConnections(const FbxRecord& connections) {
    for (const FbxRecord& record : connections.children) {
        const auto source = objects_.find(record.Integer(1));
        const auto target = objects_.find(record.Integer(2));
        if (source == objects_.end() || target == objects_.end() || source->first == 0)
            continue;
        const std::string type = record.Text(0);
        if (type == "OO" || type == "OP")
            target->second.sources_.push_back({&source->second, record.Text(3)});
    }
}

} // namespace sceneconv

#pragma once
// A host thing's class and parameters as properties "3dsMax|<block>|<parameter>", the way the
// host's own files carry what FBX has no words for.
#include "simhost/files/fbx_property.h"

#include <iparamb2.h>
#include <max.h>

#include <initializer_list>

namespace simhost {

/// A parameter that points at something; the property itself has no value then.
template <class T>
struct FbxHostLink {
    std::string property;
    T* target = nullptr;
};

struct FbxHostParams {
    FbxProperties properties;
    std::vector<FbxHostLink<Texmap>> textures; // none null
    std::vector<FbxHostLink<Mtl>> materials;   // none null

    /// The value of the first of these parameters ("roughness", or "maps|1" for an entry of a
    /// table) that there is, whatever its block and letter case; null when there is none.
    [[nodiscard]] const FbxValue* Find(std::initializer_list<const char*> names) const;
    /// As numbers; the fallback for other values.
    [[nodiscard]] double Number(std::initializer_list<const char*> names, double fallback) const;
    [[nodiscard]] FbxVec3 Colour(std::initializer_list<const char*> names,
                                 const FbxVec3& fallback) const;
    [[nodiscard]] std::string Text(std::initializer_list<const char*> names) const;
    [[nodiscard]] Texmap* Texture(std::initializer_list<const char*> names) const;
};

/// All parameter blocks of the thing and of the sub-objects that it refers to (a Standard
/// material's shader). Tables: "<parameter>" without a value, then "<parameter>|<index>".
[[nodiscard]] FbxHostParams CollectFbxHostParams(ReferenceMaker& thing, TimeValue t);

/// UTF-8 of a text that may be null.
[[nodiscard]] std::string FbxText(const MCHAR* text);

} // namespace simhost

#include "host/modifier_stack.h"

#include "host/text.h"

namespace brimwave {

// Current releases add "Mod" to the names that older ones use.
DisplacementKind DisplacementKindOf(std::wstring_view className) {
    std::wstring name = ToLowerW(className);
    if (name.ends_with(L"mod"))
        name.resize(name.size() - 3);
    if (name == L"coronadisplacement" || name == L"corona_displacement")
        return DisplacementKind::Corona;
    if (name == L"vraydisplacement" || name == L"vray_displacement")
        return DisplacementKind::VRay;
    return DisplacementKind::None;
}

} // namespace brimwave

#include "host/bitmap_file.h"

#include "host/sdk_compat.h"
#include "host/text.h"

#include <stdmat.h>

#include <algorithm>

namespace brimwave {
namespace {

// Where the other classes keep the path; V-Ray's have a name of their own for it.
constexpr ParamRow pathRows[] = {{L"filename"}, {L"HDRIMapName"}};

constexpr std::wstring_view bitmapClasses[] = {L"CoronaBitmap", L"VRayBitmap", L"VRayHDRI"};

bool IsHostBitmap(MtlBase& map) {
    return map.ClassID() == Class_ID(BMTEX_CLASS_ID, 0);
}

bool IsLetterOrDigit(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

} // namespace

BitmapTex* AsHostBitmap(MtlBase& map) {
    return IsHostBitmap(map) ? dynamic_cast<BitmapTex*>(&map) : nullptr;
}

bool IsBitmapTexmap(Texmap& map) {
    if (IsHostBitmap(map))
        return true;
    std::wstring name = ClassNameOf(map); // which may begin with a control character
    name.erase(name.begin(), std::find_if(name.begin(), name.end(), IsLetterOrDigit));
    return std::any_of(std::begin(bitmapClasses), std::end(bitmapClasses),
                       [&](std::wstring_view known) { return EqualsIgnoringCase(name, known); });
}

std::optional<std::wstring> FindBitmapPath(ParamReader& params, MtlBase& map) {
    if (BitmapTex* const bitmap = AsHostBitmap(map)) { // which keeps it outside of its parameters
        std::wstring name = HostText(bitmap->GetMapName());
        return name.empty() ? std::nullopt : std::optional(std::move(name));
    }
    for (ParamValue& value : params.FindParamValues(&map, pathRows))
        if (value.kind == ParamKind::String)
            return std::move(value.stringValue);
    return std::nullopt;
}

} // namespace brimwave
